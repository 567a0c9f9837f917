#pragma once

#include <QTimer>
#include <functional>

#include "clock/tick_timer.h"

namespace corvanel {

/// The clock's wake-up on the window thread.
class QtTickTimer : public QObject, public TickTimer {
  Q_OBJECT

 public:
  /// `wakeUp` is called each time the timer fires, `wasHeld` before a wake-up that was held.
  QtTickTimer(std::function<void()> wakeUp, std::function<void()> wasHeld);

  void Arm(double seconds) override;
  void Disarm() override;

  /// Seconds until the wake-up; negative when none is outstanding.
  double SecondsToTick() const { return timer_.remainingTime() / 1000.0; }

  /// From Hold to Release no wake-up is given; one that falls due meanwhile comes at Release.
  void Hold();
  void Release();

 private:
  void Fire();

  std::function<void()> wakeUp_;
  std::function<void()> wasHeld_;
  QTimer timer_;
  int holds_ = 0;
  bool missed_ = false;
};

}  // namespace corvanel
