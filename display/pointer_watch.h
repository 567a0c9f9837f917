#pragma once

#include <optional>
#include <utility>

namespace corvanel {

/// How long the command bar stays after the last real mouse movement.
constexpr int kCommandBarMilliseconds = 5000;

/// Tells real mouse movements from the move events that a window gets without any.
class PointerWatch {
 public:
  /// Whether the pointer is at another place than at the last call.
  bool Moved(int x, int y) {
    const std::pair place(x, y);
    if (last_ == place) return false;
    last_ = place;
    return true;
  }

 private:
  std::optional<std::pair<int, int>> last_;
};

}  // namespace corvanel
