#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/fuzz/web_caller.h"

namespace corvanel {

/// What must not be, told by whoever sees it.
class Faults {
 public:
  void Tell(const std::string& fault);
  size_t Count() const { return count_; }

 private:
  std::atomic<size_t> count_ = 0;
};

/// The last words of the good device as they went over the wire.
class Overheard {
 public:
  void Add(const std::string& word);
  /// The one so many before the last; empty when there is none.
  std::string Word(size_t before) const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> words_;
};

/// A connection that stays: it says what is left, if anything, by single bytes, and then nothing.
struct Loiterer {
  std::unique_ptr<WebCaller> caller;
  std::string left;
  bool page = false;
  double until = 0;  // uptime by which the server must have ended it
  const char* what = "";
};

/// Those who stay, a bounded number of them so that others come in too.
class Loiterers {
 public:
  Loiterers(std::function<double()> uptime, Faults& faults)
      : uptime_(std::move(uptime)), faults_(faults) {}

  /// False when there are enough of its kind.
  bool Take(Loiterer loiterer);
  bool Full(bool page) const;
  /// Waits until the server has ended all that are no pages, which takes it ten seconds, and drops
  /// the pages.
  void SeeOut();
  /// How many the server has ended.
  long Ended() const { return ended_; }

 private:
  void GoOn(const std::stop_token& stopped);
  void Step();

  std::function<double()> uptime_;
  Faults& faults_;
  mutable std::mutex mutex_;
  std::list<Loiterer> all_;
  std::atomic<long> ended_ = 0;
  std::jthread thread_{[this](const std::stop_token& stopped) { GoOn(stopped); }};
};

/// What strangers meet, know and have overheard.
struct Hall {
  uint16_t port = 0;
  std::function<double()> uptime;
  std::string deviceKey;  // of the good device: for words that break the rules of order and time
  std::string usedKey;    // of a code by which somebody came in
  std::string openId;     // of the open invitation
  Overheard overheard;
  Faults faults;
  Loiterers loiterers{[this] { return uptime(); }, faults};
};

}  // namespace corvanel
