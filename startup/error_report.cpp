#include "startup/error_report.h"

#include <fmt/format.h>

namespace corvanel {

void ErrorReport::ReportError(std::string_view place, const RuntimeError& error, int line) {
  try {
    Ask(place, error.what(), error.Number(), line);
  } catch (const std::exception& own) {
    // An error of the report itself is reported the same way, once, and then skipped.
    try {
      Ask("modError", own.what(), 51, 0);
    } catch (const std::exception&) {
      return;
    }
  }
}

void ErrorReport::Ask(std::string_view place, const std::string& description, int number,
                      int line) {
  const std::string text =
      fmt::format("{}\r\n{}\r\nError no. {}\r\nLine {}\r\nDo you wish to try to continue?", place,
                  description, number, line);
  hold_(true);
  const Answer answer = prompts_.AskToContinue(text);
  hold_(false);
  if (answer == Answer::No) endAtOnce_();
}

}  // namespace corvanel
