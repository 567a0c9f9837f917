#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvanel {

/// An unexpected error on its way to the error report. Numbers and descriptions are the
/// runtime's own, which directors know from the message box.
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

/// Where a failing handler step is reported.
class ErrorTrap {
 public:
  virtual ~ErrorTrap() = default;

  /// Tells the director; returns when the handler shall go on with its next step.
  /// `line` is the number of the failing step within its handler, from 1; 0 when not known.
  virtual void ReportError(std::string_view place, const RuntimeError& error, int line) = 0;
};

/// Runs the steps of one event handler: a step that fails is reported with the handler's place
/// name, and the next step runs all the same.
class HandlerSteps {
 public:
  HandlerSteps(ErrorTrap& trap, std::string_view place) : trap_(trap), place_(place) {}

  /// Runs the next step. Returns false when it failed (its own effect is lost).
  bool operator()(const std::function<void()>& step);

 private:
  ErrorTrap& trap_;
  std::string place_;
  int line_ = 0;
};

}  // namespace corvanel
