#include "session/notices.h"

#include <algorithm>

#include "session/session_listener.h"

namespace corvanel {
namespace {

std::vector<Notice>::iterator Find(std::vector<Notice>& notices, NoticeKind kind,
                                   const std::string& subject) {
  return std::find_if(notices.begin(), notices.end(), [&](const Notice& notice) {
    return notice.kind == kind && notice.subject == subject;
  });
}

/// Whether there was such a line.
bool Drop(std::vector<Notice>& notices, NoticeKind kind, const std::string& subject) {
  const auto found = Find(notices, kind, subject);
  if (found == notices.end()) return false;
  notices.erase(found);
  return true;
}

}  // namespace

void Notices::Set(const Notice& notice) {
  const auto dismissed = Find(dismissed_, notice.kind, notice.subject);
  if (dismissed != dismissed_.end() && *dismissed == notice) return;
  const auto found = Find(notices_, notice.kind, notice.subject);
  if (found == notices_.end()) {
    notices_.push_back(notice);
  } else {
    if (*found == notice) return;
    *found = notice;
  }
  listener_.ShowNotices(notices_);
}

void Notices::Remove(NoticeKind kind, const std::string& subject) {
  if (Drop(notices_, kind, subject)) listener_.ShowNotices(notices_);
}

void Notices::Clear(NoticeKind kind, const std::string& subject) {
  Drop(dismissed_, kind, subject);
  Remove(kind, subject);
}

void Notices::Dismiss(const Notice& notice) {
  const auto found = Find(notices_, notice.kind, notice.subject);
  if (found == notices_.end()) return;
  Drop(dismissed_, notice.kind, notice.subject);
  dismissed_.push_back(*found);
  Remove(notice.kind, notice.subject);
}

}  // namespace corvanel
