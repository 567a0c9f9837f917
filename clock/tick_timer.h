#pragma once

namespace corvanel {

/// The one timer that wakes the clock up. When it fires, RoundClock::Tick is to be called.
class TickTimer {
 public:
  virtual ~TickTimer() = default;
  /// Fires once, `seconds` from now (0 or more), in place of any wake-up still outstanding.
  virtual void Arm(double seconds) = 0;
  virtual void Disarm() = 0;
};

}  // namespace corvanel
