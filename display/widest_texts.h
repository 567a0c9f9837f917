#pragma once

#include <string>

#include "session/session.h"

namespace corvanel {

/// The texts that the display has to hold, each in the widest form that the session can bring;
/// empty what it does not show.
struct WidestTexts {
  std::string header;
  std::string now;
  std::string countdown;
  std::string tagged;   // the countdown while a word stands in the corner of its field
  std::string caption;  // or, of a move, its message as it is
  std::string large;    // the state in the caption's row, "PAUSED", as it is
  std::string finish;   // finish and break line
  std::string unit;     // the line about the tables

  bool operator==(const WidestTexts&) const = default;
};

/// The widest texts of a session as it is set, with a countdown of `secondsLeft` under way.
WidestTexts WidestTextsOf(const Session& session, double secondsLeft);

/// The line of finish and break time, as the display shows it.
std::string FinishAndBreak(const std::string& finish, const std::string& breakLine);

}  // namespace corvanel
