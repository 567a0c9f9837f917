#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace corvanel {

/// Rounds as the director lists them: "3,7". The text stays as it was written; what is no round
/// number in it lists nothing.
class RoundList {
 public:
  RoundList() = default;
  RoundList(std::string text);
  RoundList(const char* text) : RoundList(std::string(text)) {}

  const std::string& Text() const { return text_; }
  bool Empty() const { return text_.empty(); }
  bool Lists(int round) const {
    return std::find(rounds_.begin(), rounds_.end(), round) != rounds_.end();
  }
  bool operator==(const RoundList& other) const { return text_ == other.text_; }

 private:
  std::string text_;
  std::vector<int> rounds_;
};

}  // namespace corvanel
