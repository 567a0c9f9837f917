#include "session/notices.h"

#include <algorithm>

namespace corvanel {

void Notices::Set(const Notice& notice) {
  const auto found = std::find_if(notices_.begin(), notices_.end(),
                                  [&](const Notice& n) { return n.kind == notice.kind; });
  if (found == notices_.end()) {
    notices_.push_back(notice);
  } else {
    if (*found == notice) return;
    *found = notice;
  }
  view_.ShowNotices(notices_);
}

void Notices::Clear(NoticeKind kind) {
  const auto gone =
      std::erase_if(notices_, [&](const Notice& notice) { return notice.kind == kind; });
  if (gone > 0) view_.ShowNotices(notices_);
}

}  // namespace corvanel
