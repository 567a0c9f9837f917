#include "session/notices.h"

#include <algorithm>

#include "session/session_listener.h"

namespace corvanel {
namespace {

std::vector<Notice>::iterator Find(std::vector<Notice>& notices, NoticeKind kind) {
  return std::find_if(notices.begin(), notices.end(),
                      [&](const Notice& notice) { return notice.kind == kind; });
}

void Drop(std::vector<Notice>& notices, NoticeKind kind) {
  std::erase_if(notices, [&](const Notice& notice) { return notice.kind == kind; });
}

}  // namespace

void Notices::Set(const Notice& notice) {
  const auto dismissed = Find(dismissed_, notice.kind);
  if (dismissed != dismissed_.end() && *dismissed == notice) return;
  const auto found = Find(notices_, notice.kind);
  if (found == notices_.end()) {
    notices_.push_back(notice);
  } else {
    if (*found == notice) return;
    *found = notice;
  }
  listener_.ShowNotices(notices_);
}

void Notices::Remove(NoticeKind kind) {
  if (Find(notices_, kind) == notices_.end()) return;
  Drop(notices_, kind);
  listener_.ShowNotices(notices_);
}

void Notices::Clear(NoticeKind kind) {
  Drop(dismissed_, kind);
  Remove(kind);
}

void Notices::Dismiss(NoticeKind kind) {
  const auto found = Find(notices_, kind);
  if (found == notices_.end()) return;
  Drop(dismissed_, kind);
  dismissed_.push_back(*found);
  Remove(kind);
}

}  // namespace corvanel
