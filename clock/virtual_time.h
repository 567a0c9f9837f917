#pragma once

#include <optional>
#include <string>
#include <utility>

#include "clock/tick_timer.h"
#include "session/time_source.h"

namespace corvanel {

/// A time that passes only when told to, with the wake-up of one clock in it: an evening runs as
/// fast as the processor goes.
class VirtualTime : public TimeSource, public TickTimer {
 public:
  /// `boot` names the run of the computer.
  explicit VirtualTime(ClockTime start, DateTime day = {}, std::string boot = "virtual")
      : start_(start), day_(day), boot_(std::move(boot)) {}

  Moment ThisMoment() const override {
    return {boot_, elapsed_,
            static_cast<double>(day_.seconds) + start_.Seconds() + elapsed_ + set_};
  }
  ClockTime TimeOfDay() const override { return start_.PlusSeconds(elapsed_ + set_); }
  DateTime Now() const override {
    return {day_.seconds + static_cast<int64_t>(start_.Seconds() + elapsed_ + set_)};
  }
  void Arm(double seconds) override { due_ = elapsed_ + seconds; }
  void Disarm() override { due_.reset(); }

  /// Seconds since the start.
  double Elapsed() const { return elapsed_; }
  /// When the wake-up is due, in seconds since the start; nothing when none is outstanding.
  std::optional<double> Due() const { return due_; }
  /// The computer's clock is set, forward or back, by `seconds`.
  void SetClock(double seconds) { set_ += seconds; }
  /// Lets time pass to `elapsed` seconds since the start, without waking anybody.
  void PassTo(double elapsed) { elapsed_ = elapsed; }
  /// Lets time pass to the wake-up that is due, and takes it as given.
  void PassToWakeUp() {
    elapsed_ = *due_;
    due_.reset();
  }

 private:
  ClockTime start_;
  DateTime day_;
  std::string boot_;
  double elapsed_ = 0;
  double set_ = 0;  // seconds that the computer's clock was set forward
  std::optional<double> due_;
};

}  // namespace corvanel
