#pragma once

#include <QDialog>

#include "session/session.h"

class QLabel;
class QSpinBox;

namespace corvanel {

/// The one step on a computer that has never seen the program: two numbers, and the clock runs.
class DlgWelcome : public QDialog {
  Q_OBJECT

 public:
  /// `session`: with its start time, whose settings are proposed.
  DlgWelcome(const Session& session, QWidget* parent);

  /// The session's settings with the numbers that were chosen.
  SessionSettings Settings() const;

 private:
  void ShowFinish();

  const Session& session_;
  QSpinBox* rounds_;
  QSpinBox* minutes_;
  QLabel* finish_;
};

}  // namespace corvanel
