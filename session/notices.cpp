#include "session/notices.h"

#include <algorithm>

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
  const auto waved = Find(wavedAway_, notice.kind);
  if (waved != wavedAway_.end() && *waved == notice) return;
  const auto found = Find(notices_, notice.kind);
  if (found == notices_.end()) {
    notices_.push_back(notice);
  } else {
    if (*found == notice) return;
    *found = notice;
  }
  view_.ShowNotices(notices_);
}

void Notices::Remove(NoticeKind kind) {
  if (Find(notices_, kind) == notices_.end()) return;
  Drop(notices_, kind);
  view_.ShowNotices(notices_);
}

void Notices::Clear(NoticeKind kind) {
  Drop(wavedAway_, kind);
  Remove(kind);
}

void Notices::WaveAway(NoticeKind kind) {
  const auto found = Find(notices_, kind);
  if (found == notices_.end()) return;
  Drop(wavedAway_, kind);
  wavedAway_.push_back(*found);
  Remove(kind);
}

}  // namespace corvanel
