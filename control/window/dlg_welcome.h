#pragma once

#include <QDialog>

#include "session/session.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace corvanel {

/// The one step on a computer that has never seen the program: two numbers, and Start.
class DlgWelcome : public QDialog {
  Q_OBJECT

 public:
  /// `session`: whose settings are proposed; it starts at `start`. `screens`: how many there are.
  DlgWelcome(const Session& session, ClockTime start, qsizetype screens, QWidget* parent);

  /// The session's settings with the numbers that were chosen.
  SessionSettings Settings() const;

 protected:
  /// Enter goes from number to number, and only then starts: nobody who means to close one window
  /// after the other begins a session.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void ShowFinish();

  const Session& session_;
  const ClockTime start_;
  QSpinBox* rounds_;
  QSpinBox* minutes_;
  QCheckBox* second_;  // screen
  QLabel* finish_;
  QPushButton* cmdStart_;
};

}  // namespace corvanel
