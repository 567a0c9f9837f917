#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "basics/times.h"

namespace corvanel {

/// Wrong arguments, or a file that cannot be used: one line for standard error, exit code 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What the command line of the console program asks for.
struct ConsoleArguments {
  std::string command;  // "plan", "run", "scoring", or empty when only help is wanted
  std::string file;     // that "scoring" looks at
  bool help = false;
  std::string store;                                          // empty: the user's own
  std::vector<std::pair<std::string, std::string>> settings;  // key and value, in their order
  std::optional<ClockTime> start;
  std::optional<int> round;
  bool json = false;
  std::string replay;  // scoring file to run with; empty: none
  double speed = 1;    // 0: as fast as it goes
  std::optional<ClockTime> until;
};

/// Reads the arguments after the program's name. Throws UsageError.
ConsoleArguments ReadArguments(const std::vector<std::string>& arguments);

/// The help text of a command, or of the program when `command` is empty.
std::string HelpText(const std::string& command);

}  // namespace corvanel
