#include "console/arguments.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "startup/version.h"

namespace corvanel {
namespace {

using Option = std::pair<const char*, const char*>;  // name and what its help says

void AddTime(CLI::App& command, Option option, std::optional<ClockTime>& time) {
  const auto read = [&time, name = option.first](const std::string& text) {
    time = ParseTime(text);
    if (!time) throw CLI::ValidationError(name, fmt::format("\"{}\" is no time", text));
  };
  command.add_option_function<std::string>(option.first, read, option.second)
      ->type_name("hh:mm[:ss]");
}

void AddRound(CLI::App& command, std::optional<int>& round) {
  command.add_option("--round", round, "The round to start with, or to look at")
      ->type_name("N")
      ->check(CLI::Range(1, 32767, ""));
}

void AddSession(CLI::App& command, ConsoleArguments& a) {
  const auto named = [](const std::string& file) {
    return file.empty() ? "needs a file" : std::string();
  };
  command.add_option("--store", a.store, "Settings file (default: the user's own)")
      ->type_name("FILE")
      ->check(named);
  const auto set = [&a](const std::string& text) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
      throw CLI::ValidationError("--set", fmt::format("\"{}\" is no KEY=VALUE", text));
    }
    a.settings.emplace_back(text.substr(0, equals), text.substr(equals + 1));
  };
  command
      .add_option_function<std::string>("--set", set, "Change a setting for this call; repeatable")
      ->type_name("KEY=VALUE")
      ->trigger_on_parse();
  AddTime(command, {"--start", "When the first round starts (default: now)"}, a.start);
  AddRound(command, a.round);
}

void AddRun(CLI::App& command, ConsoleArguments& a) {
  AddSession(command, a);
  const auto speed = [&a](const std::string& text) {
    a.speed = 0;
    if (text != "max" && (!CLI::detail::lexical_cast(text, a.speed) || !(a.speed > 0))) {
      throw CLI::ValidationError("--speed", fmt::format("\"{}\" is no number above 0", text));
    }
  };
  command
      .add_option_function<std::string>("--speed", speed,
                                        "N times as fast as the clock on the wall (default: 1)")
      ->type_name("N|max");
  command
      .add_option("--replay", a.replay,
                  "The shape from a scoring file, whose results come at their own times")
      ->type_name("FILE");
  AddTime(command, {"--until", "Stop at this time"}, a.until);
  command
      .add_option("--serve", a.serve,
                  "Show the session in browsers, by the clock on the wall, until it is stopped")
      ->type_name("[ADDRESS:]PORT");
  command
      .add_option("--broker", a.broker,
                  "Tell other rooms by this MQTT broker; a password comes from the environment's "
                  "CORVANEL_BROKER_PASSWORD")
      ->type_name("[mqtts://][USER@]HOST[:PORT]");
  command.add_option("--room", a.room, "What other rooms know this one as")->type_name("NAME");
}

}  // namespace

std::optional<ConsoleArguments> ReadArguments(const std::vector<std::string>& arguments) {
  ConsoleArguments a;
  CLI::App program("The round clock without a window", "corvanel-console");
  program.require_subcommand(1);
  AddSession(*program.add_subcommand("plan",
                                     "Print when the session ends, its break, the minutes "
                                     "per round, and its timetable"),
             a);
  AddRun(*program.add_subcommand("run",
                                 "Run the session with the real clock and print a line for "
                                 "each event"),
         a);
  program.set_help_all_flag("--help-all", "Print the help of every command and exit");
  program.set_version_flag("--version", "corvanel-console " + ThisVersion().Text());
  CLI::App* scoring = program.add_subcommand("scoring", "Print what a scoring file says");
  scoring->add_option("FILE", a.file)->required();
  AddRound(*scoring, a.round);
  scoring->add_flag("--json", a.json, "For machines");
  try {
    // The library wants them from the last to the first, and without the program's name.
    program.parse(std::vector<std::string>(arguments.rbegin(), std::prev(arguments.rend())));
  } catch (const CLI::CallForHelp&) {
    fmt::print("{}", program.help());
    return std::nullopt;
  } catch (const CLI::CallForAllHelp&) {
    fmt::print("{}", program.help("", CLI::AppFormatMode::All));
    return std::nullopt;
  } catch (const CLI::CallForVersion& version) {
    fmt::print("{}\n", version.what());
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  a.command = program.get_subcommands().front()->get_name();
  if (!a.serve.empty() && a.speed != 1) {
    throw UsageError("--serve goes by the clock on the wall: without --speed");
  }
  if (!a.broker.empty() && (a.serve.empty() || a.room.empty())) {
    throw UsageError("--broker goes with --serve and --room");
  }
  return a;
}

}  // namespace corvanel
