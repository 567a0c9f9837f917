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
  std::string command;                                        // "plan", "run" or "scoring"
  std::string file;                                           // that "scoring" looks at
  std::string store;                                          // empty: the user's own
  std::vector<std::pair<std::string, std::string>> settings;  // key and value, in their order
  std::optional<ClockTime> start;
  std::optional<int> round;
  bool json = false;
  std::string replay;  // scoring file to run with; empty: none
  double speed = 1;    // 0: as fast as it goes
  std::optional<ClockTime> until;
  /// Where pages for other screens are served, "[ADDRESS:]PORT"; empty: nowhere.
  std::string serve;
  /// The broker that other rooms hear of this one by, as Options::NetworkBroker; empty: none.
  std::string broker;
  std::string room;  // this one's name
};

/// Reads the arguments of the program, its own name first. Nothing when they only asked for help,
/// which is printed. Throws UsageError.
std::optional<ConsoleArguments> ReadArguments(const std::vector<std::string>& arguments);

}  // namespace corvanel
