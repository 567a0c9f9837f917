#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "basics/times.h"
#include "session/cues.h"
#include "session/display_elements.h"
#include "session/round_list.h"

namespace corvanel {

/// Which sound file each cue plays, and whether it plays. Indexed by Cue.
struct SoundChoices {
  std::array<std::string, kCues> files;
  std::array<bool, kCues> play = ForEachCue(true);
  std::array<bool, kWarnings> playFinalRound = {false, false};

  bool operator==(const SoundChoices&) const = default;
};

/// The shape of one session as the director sets it. Times in minutes, fractions allowed.
struct SessionSettings {
  int16_t nRounds = 12;  // 1 or more
  float MinPerRound = 15;
  float MinBetweenRounds = 1;  // the move; never below kShortestMove
  float MinWarning = 3;        // the later warning, before the end of the round; 0: none
  float MinWarning1 = 7;       // the earlier warning
  RoundList Skip;              // the rounds after which tables skip
  RoundList Arrow;             // the rounds after which arrows are switched
  bool optBreak = true;
  int16_t BreakAfterRound = 6;
  float TimeForBreak = 15;
  bool MoveAfterBreak = true;
  bool ExtraMonitor = false;  // the second display is used
  int16_t Calculate = 0;      // 0: estimate the finish; 1: meet RequiredFinish
  std::optional<ClockTime> RequiredFinish = ClockTime::At(22, 30);
  std::string Header;
  SoundChoices sounds;

  /// Whether the break follows that round, should another come after it. One of no length is none.
  bool BreakFollows(int round) const {
    return optBreak && TimeForBreak > 0 && round == BreakAfterRound;
  }
  /// Whether the break that is set comes before the last round is over.
  bool BreakComes() const { return BreakFollows(BreakAfterRound) && BreakAfterRound < nRounds; }

  bool operator==(const SessionSettings&) const = default;
};

constexpr int kLongestTitle = 200;     // characters
constexpr float kShortestMove = 0.1F;  // minutes
constexpr float kLongestPhase = 600;   // minutes

/// The program-wide options, by the names of their settings keys.
struct Options {
  bool AutoShutdown = false;
  bool AutoLaunch = false;
  bool AutoUpdate = true;
  bool OnTop = false;
  bool ShowTitle = true;
  int32_t ShowMessage = 0;
  std::string BWSfolder;
  std::string TableTopUnit = "Bridgemate";
  bool BMSuggest = true;
  bool BMUpdateSettings = true;
  float BMMinPerBoard = 7;
  int16_t BMBreak = 12;
  bool BMOmitwarning1 = true;
  bool BMOmitwarning2 = true;
  bool BMSlowTables = true;
  bool BMAutoMove = true;
  bool BMAutoPause = true;
  int16_t BMPauseTables = 2;
  float BMPauseMinutes = 0.2F;  // before the end of the round, from which the rule may pause
  std::string BMPauseSound;
  bool BMPausePlay = true;
  bool DisplayState = false;  // true: a normal window; false: full screen
  int32_t FormX = 0;          // geometry of the room display, twips
  int32_t FormY = 0;
  int32_t FormSizeX = 15360;
  int32_t FormSizeY = 11520;
  std::array<bool, 5> Show = {true, true, true, true, true};  // elements 0 to 3; 4 is the title
  bool BMShowInfo = true;
  bool BMShowProgress = true;
  bool BMShowTables = true;
  bool BMControl = false;
  bool LogFile = true;
  bool TimeAs24hour = true;
  int16_t TimeChange = 1;
  bool NetworkOn = false;        // other screens are served
  int32_t NetworkPort = 8080;    // kLeastPort to kGreatestPort
  std::string NetworkAddress;    // of this computer, which is shown; empty: the first
  bool NetworkShowCode = false;  // where they find it stands on the room display
  std::string NetworkRoom;       // what other rooms know this one as
  std::string NetworkBroker;     // "[mqtts://][USER@]HOST[:PORT]"; empty: none
  std::string NetworkBrokerPassword;
  int16_t HintsGiven = 0;  // sessions that began with a word on how to find buttons and keys

  bool operator==(const Options&) const = default;
  TimeForm Form() const { return TimeAs24hour ? TimeForm::Hours24 : TimeForm::Hours12; }
};

/// The ports that a program may serve at without being the computer's administrator.
constexpr int kLeastPort = 1024;
constexpr int kGreatestPort = 65535;

/// The steps in seconds that the shown countdown can move in.
constexpr std::array<int, 7> kCountdownSteps = {1, 5, 10, 15, 20, 30, 60};

/// Index in Options::Show of the title's flag.
constexpr size_t kShowTitle = 4;

/// A moment of a round at which the players are warned.
struct Warning {
  float minutes = 0;  // before the end; 0: never
  Element style{};    // of the countdown from then on
  Cue cue{};
};

/// The warnings by their numbers: 0 is the last one of the round, 1 the early one.
inline std::array<Warning, kWarnings> WarningsOf(const SessionSettings& settings) {
  return {{{settings.MinWarning, Element::LastWarning, Cue::LastWarning},
           {settings.MinWarning1, Element::EarlyWarning, Cue::EarlyWarning}}};
}

/// Everything that the evening's windows, clock and schedule share.
struct Session {
  SessionSettings settings;
  Options options;
  ElementStyles elements = DefaultElementStyles();
  std::string ProgramFolder;  // without a trailing separator

  bool operator==(const Session&) const = default;
};

}  // namespace corvanel
