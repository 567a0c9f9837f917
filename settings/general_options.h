#pragma once

#include <functional>
#include <string>

#include "basics/runtime_error.h"
#include "settings/settings_table.h"

namespace corvanel {

/// The values of the dialog's check boxes: 0 or 1.
struct GeneralBoxes {
  int chkAutoStart = 0;
  int chkAutoShutdown = 0;
  int chkAutoUpdate = 0;
  int chkOnTop = 0;

  bool operator==(const GeneralBoxes&) const = default;
};

/// The logic of the general options.
class GeneralOptions {
 public:
  /// `applyOnTop` brings the windows to or from the top, as the options now are.
  GeneralOptions(Session& session, SettingsTable& table, ErrorTrap& errors,
                 std::function<void()> applyOnTop)
      : session_(session), table_(table), errors_(errors), applyOnTop_(std::move(applyOnTop)) {}

  GeneralBoxes Boxes() const;
  /// "Bridgemate Options", with the name of the unit in use.
  std::string UnitCaption() const { return session_.options.TableTopUnit + " Options"; }
  /// Takes over and stores the boxes.
  void cmdOK_Click(const GeneralBoxes& boxes);

 private:
  Session& session_;
  SettingsTable& table_;
  ErrorTrap& errors_;
  std::function<void()> applyOnTop_;
};

}  // namespace corvanel
