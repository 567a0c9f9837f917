#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace corvanel {

/// An unexpected error on its way to the error report. The message box shows
/// number and description.
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(int number, const std::string& description)
      : std::runtime_error(description), number_(number) {}
  int Number() const { return number_; }

  static RuntimeError Overflow() { return {6, "Overflow"}; }
  static RuntimeError TypeMismatch() { return {13, "Type mismatch"}; }

 private:
  int number_;
};

/// Where what goes wrong unexpectedly is reported.
class ErrorTrap {
 public:
  virtual ~ErrorTrap() = default;

  /// Tells the director; returns when the program shall go on. `place` names the window or module
  /// and its handler, "frmMain.cmdStart_Click"; `line` is the number of the failing step within
  /// it, from 1; 0 when not known.
  virtual void ReportError(std::string_view place, const RuntimeError& error, int line) = 0;

  /// Reports the exception that is being handled.
  void ReportCurrent(std::string_view place, int line);
};

/// Runs a step of the handler `place`; whatever is thrown in it is reported and goes no further.
/// Returns false when the step failed: its own effect is lost.
template <class Step>
bool Guarded(ErrorTrap& trap, std::string_view place, Step&& step, int line = 1) {
  try {
    step();
    return true;
  } catch (...) {
    trap.ReportCurrent(place, line);
    return false;
  }
}

/// The steps of one handler: each runs whether or not the one before it failed.
class HandlerSteps {
 public:
  HandlerSteps(ErrorTrap& trap, std::string_view place) : trap_(trap), place_(place) {}

  template <class Step>
  bool operator()(Step&& step) {
    return Guarded(trap_, place_, step, ++line_);
  }

 private:
  ErrorTrap& trap_;
  std::string_view place_;
  int line_ = 0;
};

}  // namespace corvanel
