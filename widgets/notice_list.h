#pragma once

#include <QFrame>
#include <cstdint>
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
  /// Shows no more than so many lines, the latest; the last of them says how many wait.
  void SetMost(size_t most) { most_ = most; }
  void SetTextSize(int pixels);

 signals:
  /// The button of a line was pressed.
  void ActionWanted(const Notice& notice);
  void Dismissed(const Notice& notice);

 private:
  QWidget* LineOf(const Notice& notice, const QString& more);

  std::vector<Notice> shown_;
  size_t most_ = SIZE_MAX;
};

}  // namespace corvanel
