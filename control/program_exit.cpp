#include "control/program_exit.h"

namespace corvanel {

bool ProgramExit::WantsToExit() {
  return prompts_.AskYesNo("Do you want to exit the program?") == Answer::Yes;
}

void ProgramExit::FromControlWindow(bool clockWasStarted) {
  if (clock_.UnderWay() && !WantsToExit()) return;
  if (clockWasStarted) host_.SaveDisplayGeometry();
  End(AskShutdown());
}

bool ProgramExit::FromDisplay() {
  if (!WantsToExit()) return false;
  const Way way = AskShutdown();
  if (way == Way::Stay) return false;
  host_.SaveDisplayGeometry();
  End(way);
  return true;
}

ProgramExit::Way ProgramExit::AskShutdown() {
  if (!session_.options.AutoShutdown) return Way::End;
  switch (
      prompts_.AskYesNoCancel("Do you wish to shut down the computer?\n"
                              "Click Yes to shut down\n"
                              "Click No to do other work\n"
                              "Click Cancel to continue with Corvanel")) {
    case Answer::Yes:
      return Way::EndAndShutDown;
    case Answer::No:
      return Way::End;
    default:
      return Way::Stay;
  }
}

void ProgramExit::End(Way way) {
  if (way == Way::Stay) return;
  if (way == Way::EndAndShutDown) host_.ShutDownComputer();
  host_.EndProgram();
}

}  // namespace corvanel
