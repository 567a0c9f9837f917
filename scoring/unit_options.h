#pragma once

#include <array>
#include <string>
#include <string_view>

#include "basics/runtime_error.h"
#include "session/prompts.h"
#include "session/sound_player.h"
#include "settings/settings_table.h"

namespace corvanel {

/// The number boxes of the dialog, in the order in which Enter goes through them.
enum class UnitBox { MinPerBoard, Break, Pause, PauseMinutes };
constexpr size_t kUnitBoxes = 4;

/// What the controls of the dialog hold.
struct UnitValues {
  bool chkSuggest = false;
  bool chkUpdateSettings = false;
  bool chkOmitWarning1 = false;
  bool chkOmitWarning2 = false;
  bool chkSlowTables = false;
  bool chkAutoMove = false;
  bool chkPause = false;
  bool chkPlay = false;
  bool chkLogFile = false;
  std::array<std::string, kUnitBoxes> numbers;  // by UnitBox
  int optDesktop = 0;                           // 0 Bridgemate, 1 BridgeTab, 2 another unit
  std::string txtOther;                         // the name of that other unit

  bool operator==(const UnitValues&) const = default;
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

  /// The options as they are.
  UnitValues Values() const;

  /// The name of the unit that is chosen; another unit without a name is "DesktopUnit".
  static std::string UnitName(const UnitValues& values);
  static std::string Caption(const UnitValues& values) { return UnitName(values) + " Options"; }
  static std::string SuggestCaption(const UnitValues& values) {
    return "Suggest latest " + UnitName(values) + " file";
  }
  /// Whether a character may be typed into a box.
  static bool Takes(UnitBox box, char character);

  /// The focus leaves a box. False: a message told why it must stay.
  bool Leave(UnitBox box, const std::string& text) const;
  /// The file of the pause sound without its folder, and a word when it is not there.
  std::string SoundText() const;
  void cmdSound_Click();
  void cmdTest_Click();
  /// Checks, takes over and stores everything. Nothing, after a message, when a box is wrong:
  /// that box is returned. True as the second when the dialog may close.
  std::pair<UnitBox, bool> cmdOK_Click(const UnitValues& values);

 private:
  std::string Problem(UnitBox box, const std::string& text) const;

  Parts parts_;
  std::string sound_;
};

}  // namespace corvanel
