#include "system/qt/qt_tick_timer.h"

#include <chrono>
#include <cmath>

namespace corvanel {

QtTickTimer::QtTickTimer(std::function<void()> wakeUp, std::function<void()> wasHeld)
    : wakeUp_(std::move(wakeUp)), wasHeld_(std::move(wasHeld)) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &QtTickTimer::Fire);
}

void QtTickTimer::Arm(double seconds) {
  // Rounded up: a tick that came too early would find nothing to do.
  timer_.start(std::chrono::milliseconds(std::lround(std::ceil(seconds * 1000))));
}

void QtTickTimer::Disarm() {
  timer_.stop();
  missed_ = false;
}

void QtTickTimer::Fire() {
  if (holds_ > 0) {
    missed_ = true;
  } else {
    wakeUp_();
  }
}

void QtTickTimer::Hold() {
  ++holds_;
}

void QtTickTimer::Release() {
  if (--holds_ > 0 || !missed_) return;
  missed_ = false;
  wasHeld_();
  timer_.start(0);
}

}  // namespace corvanel
