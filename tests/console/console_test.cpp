#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>
#include <string>

#include "session/timetable.h"
#include "settings/settings_table.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

struct Output {
  std::string text;
  int code = 0;
};

/// Runs the console program with an empty store; standard error is part of the text.
Output Console(const std::string& arguments) {
  const std::string command = std::string("\"" CORVANEL_CONSOLE "\" ") + arguments + " 2>&1";
  FILE* pipe = popen(command.c_str(), "r");
  Output output;
  std::array<char, 4096> buffer{};
  while (const size_t n = fread(buffer.data(), 1, buffer.size(), pipe)) {
    output.text.append(buffer.data(), n);
  }
  output.code = WEXITSTATUS(pclose(pipe));
  return output;
}

const std::string kEmpty = " --store /nonexistent/corvanel.json ";

TEST(ConsoleTest, PlansASession) {
  const Output plan = Console("plan" + kEmpty +
                              "--start 19:30 --set nRounds=3 --set MinPerRound=20 "
                              "--set BreakAfterRound=2 --set MoveAfterBreak=0");
  EXPECT_EQ(plan.code, 0);
  EXPECT_EQ(plan.text,
            "finish\t20:46\nbreak\t20:11\nminutes-per-round\t20.00\n"
            "19:30\tround\tTime remaining for Round 1 of 3\n"
            "19:50\tmove\tMOVE FOR ROUND 2\n"
            "19:51\tround\tTime remaining for Round 2 of 3\n"
            "20:11\tbreak\tTime remaining for the break\n"
            "20:26\tround\tFinal Round of 3\n");
}

TEST(ConsoleTest, RunsUntilATime) {
  const Output run = Console("run --speed max --until 19:46" + kEmpty + "--start 19:30 --round 11");
  EXPECT_EQ(run.text,
            "19:30:00\tround\tTime remaining for Round 11 of 12\n"
            "19:38:00\twarning\tBetween warnings\n19:38:00\tsound\tFx2 LastBoard.wav\n"
            "19:42:00\twarning\tWarning period\n19:42:00\tsound\tFx2 DontStart.wav\n"
            "19:45:00\tmove\tMOVE FOR THE FINAL ROUND\n19:45:00\tsound\tFx2 Move.wav\n"
            "19:46:00\tround\tFinal Round of 12\n");
}

TEST(ConsoleTest, WrongArgumentsGetOneLineAndCodeTwo) {
  for (const char* arguments : {"",
                                "dance",
                                "plan --round 0",
                                "plan --round 13",
                                "plan --round x",
                                "run --speed 0",
                                "run --serve x",
                                "run --serve 70000",
                                "run --serve 203.0.113.7:0",
                                "run --serve 0 --speed 2",
                                "run --speed -1",
                                "run --speed fast",
                                "plan --speed 2",
                                "plan --start 25:00",
                                "plan --set x",
                                "plan --set NoSuchKey=1",
                                "plan --set nRounds=abc",
                                "plan --set nRounds=0",
                                "plan --start",
                                "plan run",
                                "run --set MinPerRound=0 --speed max",
                                "plan --store /",
                                "plan --store ''",
                                "--bogus"}) {
    const bool ownStore = std::string(arguments).find("--store") != std::string::npos;
    const Output output = Console(arguments + (ownStore || !*arguments ? "" : kEmpty));
    EXPECT_EQ(output.code, 2) << arguments;
    EXPECT_EQ(std::count(output.text.begin(), output.text.end(), '\n'), 1) << output.text;
  }
}

TEST(ConsoleTest, HelpNamesWhatEachCommandTakes) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> rows = {
      {"", {"plan", "run", "scoring"}},
      {"plan", {"--store", "--set", "--start", "--round"}},
      {"run",
       {"--store", "--set", "--start", "--round", "--speed", "--until", "--replay", "--serve"}},
      {"scoring", {"FILE", "--round", "--json"}}};
  for (const auto& [command, words] : rows) {
    const Output help = Console(command + " --help");
    EXPECT_EQ(help.code, 0);
    for (const std::string& word : words) {
      EXPECT_NE(help.text.find(word), std::string::npos) << command << ' ' << word;
    }
  }
}

/// What the rules of the session say must happen, worked out apart from the clock: the lines of
/// `run` from the timetable alone.
std::vector<std::string> ExpectedPhases(const SessionSettings& s, int round, ClockTime start) {
  std::vector<std::string> lines;
  double at = 0;
  const auto add = [&](const std::string& what) {
    lines.push_back(TimeTextWithSeconds(start.PlusSeconds(at)) + '\t' + what);
  };
  for (; round <= s.nRounds; ++round) {
    add("round");
    at += s.MinPerRound * 60.0;
    if (round == s.nRounds) break;
    const bool breakHere = s.optBreak && s.BreakAfterRound == round;
    if (breakHere) {
      add("break");
      at += s.TimeForBreak * 60.0;
    }
    if (!breakHere || s.MoveAfterBreak) {
      add("move");
      at += s.MinBetweenRounds * 60.0;
    }
  }
  add("end");
  return lines;
}

TEST(ConsoleTest, AHundredSessionsOfOddShapeRunAsTheRulesSay) {
  std::mt19937 random(1121);
  const auto tenths = [&](unsigned least, unsigned span) {
    return std::to_string(static_cast<double>(least + random() % span) / 10).substr(0, 4);
  };
  for (int i = 0; i < 100; ++i) {
    Session session;
    FakeStore store;
    FakeErrors errors;
    SettingsTable table(store, session, errors);
    const unsigned long rounds = 1 + random() % 9;
    const ClockTime start(static_cast<double>(random() % 86400U));
    const unsigned long round = 1 + random() % rounds;
    std::string arguments = "run --speed max" + kEmpty + "--start " + TimeTextWithSeconds(start) +
                            " --round " + std::to_string(round);
    const std::pair<const char*, std::string> settings[] = {
        {"nRounds", std::to_string(rounds)},
        {"MinPerRound", tenths(1, 250)},
        {"MinBetweenRounds", tenths(1, 30)},
        {"MinWarning", tenths(0, 300)},
        {"MinWarning1", tenths(0, 300)},
        {"optBreak", std::to_string(random() % 2)},
        {"BreakAfterRound", std::to_string(random() % (rounds + 2))},
        {"TimeForBreak", tenths(1, 200)},
        {"MoveAfterBreak", std::to_string(random() % 2)},
    };
    for (const auto& [key, value] : settings) {
      store.SaveSetting("Timer", key, value);
      arguments += std::string(" --set ") + key + '=' + value;
    }
    table.GetDefaults();
    std::vector<std::string> phases;
    std::istringstream lines(Console(arguments).text);
    for (std::string line; std::getline(lines, line);) {
      const std::string kind = line.substr(9, line.find('\t', 9) - 9);
      if (kind != "sound" && kind != "warning") phases.push_back(line.substr(0, 9) + kind);
    }
    ASSERT_EQ(phases, ExpectedPhases(session.settings, static_cast<int>(round), start))
        << arguments;
  }
}

std::string Fixture(const char* name) {
  return " \"" CORVANEL_FIXTURES "/" + std::string(name) + ".bws\" ";
}

TEST(ConsoleTest, ShowsWhatAScoringFileSays) {
  const Output lines = Console("scoring" + Fixture("live/04-1948"));
  EXPECT_EQ(lines.code, 0);
  EXPECT_NE(lines.text.find("skip\t4\narrow\t6\nresults\t24\nround\t1\n"), std::string::npos)
      << lines.text;
  EXPECT_NE(lines.text.find("progress\tTables 5 7 still playing\n"), std::string::npos);
  const auto json = nlohmann::json::parse(Console("scoring --json" + Fixture("two-sections")).text);
  EXPECT_EQ(json["format"], "Jet4");
  EXPECT_EQ(json["totalTables"], 11);
  EXPECT_EQ(json["received"], 70);
  EXPECT_EQ(json["sections"][0]["missingPair"], 10);
  const auto second =
      nlohmann::json::parse(Console("scoring --json --round 2" + Fixture("two-sections")).text);
  EXPECT_EQ(second["progress"]["notPlaying"], nlohmann::json({"A1"}));
  EXPECT_EQ(second["progress"]["finished"].size(), 10U);
  EXPECT_EQ(Console("scoring" + Fixture("no-section-table")).code, 2);
}

TEST(ConsoleTest, ReplaysAnEvening) {
  const Output friday = Console("run --speed max --start 19:30 --replay" + Fixture("friday") +
                                kEmpty + "--set MinPerRound=20 --set optBreak=False");
  EXPECT_EQ(friday.code, 0);
  for (const char* line :
       {"19:30:00\tround\tTime remaining for Round 1 of 7\n", "\tmove\tSKIP - MOVE FOR ROUND 5\n",
        "\tmove\tARROW - MOVE FOR THE FINAL ROUND\n", "\tpause\t", "\tresume\t",
        "\tsound\tShipBell.wav\n", "\tprogress\t8 tables playing\n",
        "\tend\tEnd of the session\n"}) {
    EXPECT_NE(friday.text.find(line), std::string::npos) << line;
  }
}

TEST(ConsoleTest, AReplayEndsThoughTheFileStopsInAnEvening) {
  for (const char* name : {"two-sections", "sit-outs", "names-on-units", "empty-session"}) {
    const Output run = Console("run --speed max --start 19:30 --replay" + Fixture(name) + kEmpty);
    EXPECT_NE(run.text.find("\tend\tEnd of the session\n"), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace corvanel
