#pragma once

#include <array>
#include <functional>
#include <string>

#include "basics/runtime_error.h"
#include "session/prompts.h"
#include "session/sound_player.h"
#include "settings/settings_table.h"

namespace corvanel {

/// What the dialog's check boxes say, by cue: the sound on or off; for the two warnings also in
/// the final round.
struct SoundBoxes {
  std::array<bool, kCues> chkPlay{};
  std::array<bool, kWarnings> chkPlayFinal{};

  bool operator==(const SoundBoxes&) const = default;
};

/// The logic of the sound options. Works on its own copy of the files; the live settings change
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
      : parts_(parts), files_(parts.session.settings.sounds.files) {}

  SoundBoxes Boxes() const;
  /// The present warning times, three lines.
  std::string SettingsText() const;
  /// The name of a cue's file without its folder, and a word when the file is not there.
  std::string FileText(size_t cue) const;
  bool FileIsThere(size_t cue) const { return parts_.sounds.IsThere(files_[cue]); }

  void cmdSound_Click(size_t cue);
  void cmdTest_Click(size_t cue);
  /// True when the director wants the supplied sounds back: then all boxes are to be ticked.
  bool cmdRestore_Click();
  void cmdHelp_Click();
  /// Takes over files and boxes, and asks whether to save. False: the dialog stays open.
  bool cmdOK_Click(const SoundBoxes& boxes);

 private:
  Parts parts_;
  std::array<std::string, kCues> files_;
};

}  // namespace corvanel
