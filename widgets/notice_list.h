#pragma once

#include <QFrame>
#include <vector>

#include "session/notices.h"

namespace corvanel {

/// The lines for the director, each with a button for what can be done about it and one to dismiss
/// it. Hidden while there are none. Takes no keyboard focus.
class NoticeList : public QFrame {
  Q_OBJECT

 public:
  explicit NoticeList(QWidget* parent);
  void ShowNotices(const std::vector<Notice>& notices);

 signals:
  /// The button of a line was pressed.
  void ActionWanted(NoticeKind kind);
  void Dismissed(const Notice& notice);

 private:
  QWidget* LineOf(const Notice& notice);

  std::vector<Notice> shown_;
};

}  // namespace corvanel
