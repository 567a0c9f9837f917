#pragma once

#include "clock/round_clock.h"
#include "control/control_window_view.h"
#include "session/prompts.h"
#include "session/session.h"

namespace corvanel {

/// The ways out of the program that the director can take, with their questions.
class ProgramExit {
 public:
  ProgramExit(const Session& session, const RoundClock& clock, Prompts& prompts, ControlHost& host)
      : session_(session), clock_(clock), prompts_(prompts), host_(host) {}

  /// From the control window: asks whether to exit only while a session is under way, then the
  /// shutdown question. The display's geometry is saved between the two, when the clock has been
  /// started in this run. Returns when the director stays.
  void FromControlWindow(bool clockWasStarted);

  /// From a display: asks whether to exit, then the shutdown question, then saves the geometry and
  /// ends. Returns false when the director stays.
  bool FromDisplay();

 private:
  enum class Way { Stay, End, EndAndShutDown };
  bool WantsToExit();
  Way AskShutdown();
  void End(Way way);

  const Session& session_;
  const RoundClock& clock_;
  Prompts& prompts_;
  ControlHost& host_;
};

}  // namespace corvanel
