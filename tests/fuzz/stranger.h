#pragma once

#include <random>
#include <string>
#include <vector>

#include "tests/fuzz/hall.h"

namespace corvanel {

/// Somebody in the hall who means no good. Each attack is a connection of its own; it returns
/// whether the server said anything to it.
class Stranger {
 public:
  struct Kind {
    const char* name;
    bool (Stranger::*attack)();
  };
  static const std::vector<Kind>& Kinds();

  Stranger(Hall& hall, unsigned seed) : hall_(hall), random_(seed) {}
  size_t Below(size_t limit);

 private:
  bool RandomBytes();
  bool ChangedRequests();
  bool LongRequests();
  bool StaysSilent();
  bool StopsInTheMiddle();
  bool ByteByByte();
  bool PageThatStays();
  bool ChangedHandshake();
  bool ChangedFrames();
  bool Fragments();
  bool Texts();
  bool ForgedWords();
  bool RepeatedWords();
  bool ChangedWords();
  bool WordsOutOfOrderOrTime();
  bool WordsOfOthers();
  bool Joins();

  bool OneIn(size_t number) { return Below(number) == 0; }
  template <class List>
  auto AnyOf(const List& list) {
    return *(std::begin(list) + static_cast<ptrdiff_t>(Below(std::size(list))));
  }
  std::string Bytes(size_t most);
  std::string Hex(size_t digits);
  std::string Changed(std::string text);
  std::string Command();
  std::string AnyFrame();
  uint32_t Host();

  bool Stay(std::unique_ptr<WebCaller> caller, std::string left, bool page, double seconds,
            const char* what);
  bool Send(const std::string& bytes);
  bool AsPage(const std::string& bytes);
  /// The challenge; empty when the server turned this one away.
  std::string Meet(WebCaller& caller);
  bool SayInVain(WebCaller& caller, const std::vector<std::string>& words,
                 const std::string& refused = "unknown");
  bool Leave(WebCaller& caller, double patience = 0.5);
  std::string HearAnswer(WebCaller& caller, bool known);

  Hall& hall_;
  std::mt19937 random_;
};

}  // namespace corvanel
