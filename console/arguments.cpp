#include "console/arguments.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace corvanel {
namespace {

double ReadNumber(const std::string& option, const std::string& text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
    throw UsageError(fmt::format("{} needs a number, not \"{}\"", option, text));
  }
  return value;
}

ClockTime ReadTime(const std::string& option, const std::string& text) {
  const auto time = ParseTime(text);
  if (!time)
    throw UsageError(fmt::format("{} needs a time such as 19:30, not \"{}\"", option, text));
  return *time;
}

void ReadStore(ConsoleArguments& a, const std::string& value) {
  a.store = value;
}

void ReadSetting(ConsoleArguments& a, const std::string& value) {
  const size_t equals = value.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw UsageError(fmt::format("--set needs KEY=VALUE, not \"{}\"", value));
  }
  a.settings.emplace_back(value.substr(0, equals), value.substr(equals + 1));
}

void ReadStart(ConsoleArguments& a, const std::string& value) {
  a.start = ReadTime("--start", value);
}

void ReadRound(ConsoleArguments& a, const std::string& value) {
  const double round = ReadNumber("--round", value);
  if (round < 1 || round > 32767 || round != std::floor(round)) {
    throw UsageError(fmt::format("--round needs a round from 1 on, not \"{}\"", value));
  }
  a.round = static_cast<int>(round);
}

void ReadJson(ConsoleArguments& a, const std::string& /*value*/) {
  a.json = true;
}

void ReadReplay(ConsoleArguments& a, const std::string& value) {
  a.replay = value;
}

void ReadSpeed(ConsoleArguments& a, const std::string& value) {
  a.speed = value == "max" ? 0 : ReadNumber("--speed", value);
  if (a.speed < 0 || (a.speed == 0 && value != "max")) {
    throw UsageError("--speed needs a number above 0, or max");
  }
}

void ReadUntil(ConsoleArguments& a, const std::string& value) {
  a.until = ReadTime("--until", value);
}

struct Option {
  std::string_view name;
  std::string_view onlyFor;  // command; empty: all
  std::string_view help;
  void (*read)(ConsoleArguments&, const std::string&);
  bool takesValue = true;
};

constexpr std::array kOptions = std::to_array<Option>({
    {"--store", "", "--store FILE       use this settings file (default: the user's own)",
     ReadStore},
    {"--set", "", "--set KEY=VALUE    change a setting for this call; repeatable", ReadSetting},
    {"--start", "", "--start hh:mm[:ss] when the first round starts (default: now)", ReadStart},
    {"--round", "", "--round N          the round to start with, or to look at", ReadRound},
    {"--speed", "run", "--speed N|max      N times as fast as the clock on the wall (default: 1)",
     ReadSpeed},
    {"--replay", "run",
     "--replay FILE      the shape from a scoring file, whose results come at their own times",
     ReadReplay},
    {"--json", "scoring", "--json             for machines", ReadJson, false},
    {"--until", "run", "--until hh:mm      stop at this time", ReadUntil},
});

struct Command {
  std::string_view name;
  std::string_view help;
};

constexpr std::array kCommands = std::to_array<Command>({
    {"plan", "prints when the session ends, its break, the minutes per round, and its timetable"},
    {"run", "runs the session with the real clock and prints a line for each event"},
    {"scoring", "prints what a scoring file says: corvanel-console scoring FILE"},
});

}  // namespace

ConsoleArguments ReadArguments(const std::vector<std::string>& arguments) {
  ConsoleArguments result;
  std::vector<const Option*> used;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (word == "--help" || word == "-h") {
      result.help = true;
      continue;
    }
    if (!word.starts_with("-")) {
      if (result.command == "scoring" && result.file.empty()) {
        result.file = word;
        continue;
      }
      const bool known = std::any_of(kCommands.begin(), kCommands.end(),
                                     [&](const Command& c) { return c.name == word; });
      if (!known) throw UsageError(fmt::format("unknown command \"{}\"", word));
      if (!result.command.empty()) throw UsageError("one command at a time");
      result.command = word;
      continue;
    }
    const auto option = std::find_if(kOptions.begin(), kOptions.end(),
                                     [&](const Option& o) { return o.name == word; });
    if (option == kOptions.end()) throw UsageError(fmt::format("unknown option \"{}\"", word));
    if (option->takesValue && ++i == arguments.size()) {
      throw UsageError(fmt::format("{} needs a value", word));
    }
    option->read(result, option->takesValue ? arguments[i] : "");
    used.push_back(&*option);
  }
  for (const Option* option : used) {
    if (!option->onlyFor.empty() && option->onlyFor != result.command) {
      throw UsageError(fmt::format("{} goes with {}", option->name, option->onlyFor));
    }
  }
  if (result.command == "scoring" && result.file.empty() && !result.help) {
    throw UsageError("scoring needs a file");
  }
  if (result.command.empty() && !result.help) {
    throw UsageError("a command is missing; see corvanel-console --help");
  }
  return result;
}

std::string HelpText(const std::string& command) {
  std::string text;
  if (command.empty()) {
    text = "corvanel-console: the round clock without a window\n\nCommands:\n";
    for (const Command& c : kCommands) text += fmt::format("  {:<8} {}\n", c.name, c.help);
    return text + "\nOptions of each command: corvanel-console COMMAND --help\n";
  }
  const auto found = std::find_if(kCommands.begin(), kCommands.end(),
                                  [&](const Command& c) { return c.name == command; });
  text = fmt::format("corvanel-console {}: {}\n\nOptions:\n", command, found->help);
  for (const Option& option : kOptions) {
    if (option.onlyFor.empty() || option.onlyFor == command) {
      text += fmt::format("  {}\n", option.help);
    }
  }
  return text;
}

}  // namespace corvanel
