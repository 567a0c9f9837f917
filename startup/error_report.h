#pragma once

#include <functional>

#include "basics/runtime_error.h"
#include "session/prompts.h"

namespace corvanel {

/// The one way in which unexpected errors are reported: a question that tells where and what, and
/// the choice to go on or to end the program. Nothing is written to a file.
class ErrorReport : public ErrorTrap {
 public:
  /// `hold` holds the clock's ticks while the question is open, and lets them go.
  /// `endAtOnce` ends the program without saving or asking anything, and does not return.
  ErrorReport(Prompts& prompts, std::function<void(bool held)> hold,
              std::function<void()> endAtOnce)
      : prompts_(prompts), hold_(std::move(hold)), endAtOnce_(std::move(endAtOnce)) {}

  void ReportError(std::string_view place, const RuntimeError& error, int line) override;

 private:
  void Ask(std::string_view place, const std::string& description, int number, int line);

  Prompts& prompts_;
  std::function<void(bool held)> hold_;
  std::function<void()> endAtOnce_;
};

}  // namespace corvanel
