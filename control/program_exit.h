#pragma once

#include "session/prompts.h"
#include "session/session.h"

namespace corvanel {

/// How the program ends, carried out by the program that owns the windows.
class ProgramEnding {
 public:
  virtual ~ProgramEnding() = default;
  /// Writes state, position and size of the room display to the store.
  virtual void SaveDisplayGeometry() = 0;
  virtual void ShutDownComputer() = 0;
  virtual void EndProgram() = 0;
};

/// The ways out of the program that the director can take, with their questions.
class ProgramExit {
 public:
  ProgramExit(const Session& session, Prompts& prompts, ProgramEnding& ending)
      : session_(session), prompts_(prompts), ending_(ending) {}

  /// From the control window: asks nothing but the shutdown question. The display's geometry is
  /// saved first, when the clock has been started in this run. Returns when the director cancels.
  void FromControlWindow(bool clockWasStarted);

  /// From a display: asks whether to exit, then the shutdown question, then saves the geometry and
  /// ends. Returns false when the director stays.
  bool FromDisplay();

 private:
  enum class Way { Stay, End, EndAndShutDown };
  Way AskShutdown();
  void End(Way way);

  const Session& session_;
  Prompts& prompts_;
  ProgramEnding& ending_;
};

}  // namespace corvanel
