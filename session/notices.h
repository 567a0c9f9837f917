#pragma once

#include <string>
#include <vector>

namespace corvanel {

/// What a line for the director is about; there is at most one line about each.
enum class NoticeKind { Away, Record, LastSession, Store, Sound };

/// A line for the director: shown on his screen and never on the room's, until it is mended or
/// waved away. Nothing waits for it.
struct Notice {
  NoticeKind kind;
  std::string text;
  std::string action;  // what the director can have done about it; empty when nothing

  bool operator==(const Notice&) const = default;
};

/// Where the lines for the director are shown.
class NoticeView {
 public:
  virtual ~NoticeView() = default;
  virtual void ShowNotices(const std::vector<Notice>& notices) = 0;
};

/// The lines for the director that stand now.
class Notices {
 public:
  explicit Notices(NoticeView& view) : view_(view) {}

  /// Puts a line in the place of the one of its kind.
  void Set(const Notice& notice);
  void Clear(NoticeKind kind);

 private:
  NoticeView& view_;
  std::vector<Notice> notices_;  // the latest at the end
};

}  // namespace corvanel
