#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "basics/runtime_error.h"
#include "session/prompts.h"
#include "session/sound_player.h"
#include "settings/settings_table.h"

namespace corvanel {

/// The logic of the sound options. Works on its own copy of the choices; the live settings change
/// only on OK.
class SoundOptions {
 public:
  struct Parts {
    Session& session;
    SettingsTable& table;
    SoundPlayer& sounds;
    std::function<void(const std::string& file)> open;  // for the user to read
    Prompts& prompts;
    ErrorTrap& errors;
  };
  explicit SoundOptions(const Parts& parts)
      : parts_(parts), choices_(parts.session.settings.sounds) {}

  /// The choices as they are now.
  const SoundChoices& Choices() const { return choices_; }
  /// The present warning times, three lines.
  std::string SettingsText() const;
  /// The name of a cue's file without its folder, and a word when the file is not there.
  std::string FileText(size_t cue) const;
  bool CanBePlayed(size_t cue) const {
    return parts_.sounds.Fitness(choices_.files[cue]) == SoundFitness::Fine;
  }
  /// How the test fares, in a sentence; empty before the first.
  const std::string& StatusText() const { return status_; }
  /// Whether all cues are being tested, one after the other.
  bool TestsAll() const { return testAll_.has_value(); }

  void cmdSound_Click(size_t cue);
  void cmdTest_Click(size_t cue);
  /// Tests all cues, each when the one before it is over; while it does, stops.
  void cmdTestAll_Click();
  /// A sound that is tested has begun, or is over.
  void Tested(const SoundTest& test);
  void chkPlay_Click(size_t cue, bool on) { choices_.play[cue] = on; }
  void chkPlayFinal_Click(size_t warning, bool on) { choices_.playFinalRound[warning] = on; }
  /// Asks, and gives the supplied sounds back, all switched on.
  void cmdRestore_Click();
  void cmdHelp_Click();
  /// Takes the choices over, and asks whether to save. False: the dialog stays open.
  bool cmdOK_Click();

 private:
  void TestNext(size_t cue);

  Parts parts_;
  SoundChoices choices_;
  std::optional<size_t> testAll_;  // how far the test of all has come
  std::string unheard_;            // what was not heard in it
  std::string status_;
};

}  // namespace corvanel
