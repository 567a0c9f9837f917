#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "basics/runtime_error.h"
#include "session/prompts.h"
#include "session/sound_player.h"
#include "settings/settings_table.h"

namespace corvanel {

/// The unit that the dialog has chosen.
struct UnitChoice {
  int optDesktop = 0;    // 0 Bridgemate, 1 BridgeTab, 2 another unit
  std::string txtOther;  // the name of that other unit

  /// Another unit without a name is "DesktopUnit".
  std::string Name() const;
};

/// The logic of the table-top unit options. The options change only on OK.
class UnitOptions {
 public:
  struct Parts {
    Session& session;
    SettingsTable& table;
    SoundPlayer& sounds;
    Prompts& prompts;
    ErrorTrap& errors;
  };
  explicit UnitOptions(const Parts& parts)
      : parts_(parts), sound_(parts.session.options.BMPauseSound) {}

  /// An option as it is, by its key.
  std::string Text(const std::string& key) const { return OptionText(parts_.session.options, key); }
  UnitChoice Unit() const;
  static std::string Caption(const UnitChoice& unit) { return unit.Name() + " Options"; }

  /// The keys of the number boxes, in the order in which Enter goes through them.
  static std::vector<std::string> NumberKeys();
  /// Whether a character may be typed into the number box of a key.
  static bool Takes(std::string_view key, char character);
  /// The focus leaves the number box of a key. False: a message told why it must stay.
  bool Leave(std::string_view key, const std::string& text) const;

  /// The file of the pause sound without its folder, and a word when it is not there.
  std::string SoundText() const { return NamedFile(parts_.sounds, sound_); }
  void cmdSound_Click();
  void cmdTest_Click();
  /// The sound that is tested has begun, or is over.
  void Tested(const SoundTest& test) { status_ = TestText(test); }
  /// How the test fares, in a sentence; empty before the first.
  const std::string& StatusText() const { return status_; }
  /// Checks, takes over and stores everything. When a box is wrong: nothing is changed, a message
  /// has told, and the key of that box is returned.
  std::optional<std::string> cmdOK_Click(KeysAndValues texts, const UnitChoice& unit);

 private:
  Parts parts_;
  std::string sound_;
  std::string status_;
};

}  // namespace corvanel
