#include "scoring/unit_options.h"

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "frmOptionsBridgemate";
constexpr std::array<std::string_view, 2> kKnownUnits = {"Bridgemate", "BridgeTab"};
constexpr double kMostTables = 9999;

const std::string& Number(const UnitValues& values, UnitBox box) {
  return values.numbers[static_cast<size_t>(box)];
}

}  // namespace

UnitValues UnitOptions::Values() const {
  const Options& o = parts_.session.options;
  UnitValues values;
  values.chkSuggest = o.BMSuggest;
  values.chkUpdateSettings = o.BMUpdateSettings;
  values.chkOmitWarning1 = o.BMOmitwarning1;
  values.chkOmitWarning2 = o.BMOmitwarning2;
  values.chkSlowTables = o.BMSlowTables;
  values.chkAutoMove = o.BMAutoMove;
  values.chkPause = o.BMAutoPause;
  values.chkPlay = o.BMPausePlay;
  values.chkLogFile = o.LogFile != 0;
  values.numbers = {SingleText(o.BMMinPerBoard), std::to_string(o.BMBreak),
                    std::to_string(o.BMPauseTables), SingleText(o.BMPauseMinutes)};
  values.optDesktop = 2;
  for (size_t i = 0; i < kKnownUnits.size(); ++i) {
    if (o.TableTopUnit == kKnownUnits[i]) values.optDesktop = static_cast<int>(i);
  }
  if (values.optDesktop == 2) values.txtOther = o.TableTopUnit;
  return values;
}

std::string UnitOptions::UnitName(const UnitValues& values) {
  if (values.optDesktop < 2) {
    return std::string(kKnownUnits[static_cast<size_t>(values.optDesktop)]);
  }
  return values.txtOther.empty() ? "DesktopUnit" : values.txtOther;
}

bool UnitOptions::Takes(UnitBox box, char character) {
  const bool fraction = box == UnitBox::MinPerBoard || box == UnitBox::PauseMinutes;
  return (character >= '0' && character <= '9') || (fraction && character == '.');
}

/// What is wrong with an entry; empty when nothing is.
std::string UnitOptions::Problem(UnitBox box, const std::string& text) const {
  const double number = Val(text);
  switch (box) {
    case UnitBox::MinPerBoard:
      if (number <= 0) return "The minutes per board must be greater than 0";
      [[fallthrough]];
    case UnitBox::Break:
    case UnitBox::PauseMinutes:
      return number <= kLongestPhase ? "" : "The minutes must be 600 or less";
    case UnitBox::Pause:
      return number <= kMostTables ? "" : "The number of tables must be 9999 or less";
  }
  return {};
}

bool UnitOptions::Leave(UnitBox box, const std::string& text) const {
  const std::string problem = Problem(box, text);
  if (!problem.empty()) parts_.prompts.Message(problem);
  return problem.empty();
}

std::string UnitOptions::SoundText() const {
  const std::string name(FileName(sound_));
  return parts_.sounds.IsThere(sound_) ? name : name + " (not found)";
}

void UnitOptions::cmdSound_Click() {
  Guarded(parts_.errors, kPlace, [&] {
    const auto file = parts_.prompts.ChooseFileToOpen("Choose a sound (wav) file",
                                                      parts_.session.ProgramFolder, "wav|*.wav");
    if (file) sound_ = *file;
  });
}

void UnitOptions::cmdTest_Click() {
  Guarded(parts_.errors, kPlace, [&] { parts_.sounds.Play(sound_); });
}

std::pair<UnitBox, bool> UnitOptions::cmdOK_Click(const UnitValues& values) {
  for (size_t i = 0; i < kUnitBoxes; ++i) {
    const auto box = static_cast<UnitBox>(i);
    if (!Leave(box, Number(values, box))) return {box, false};
  }
  Options& o = parts_.session.options;
  o.BMSuggest = values.chkSuggest;
  o.BMUpdateSettings = values.chkUpdateSettings;
  o.BMOmitwarning1 = values.chkOmitWarning1;
  o.BMOmitwarning2 = values.chkOmitWarning2;
  o.BMSlowTables = values.chkSlowTables;
  o.BMAutoMove = values.chkAutoMove;
  o.BMAutoPause = values.chkPause;
  o.BMPausePlay = values.chkPlay;
  o.LogFile = values.chkLogFile ? -1 : 0;
  o.BMMinPerBoard = static_cast<float>(Val(Number(values, UnitBox::MinPerBoard)));
  o.BMBreak = WholeNumber(Number(values, UnitBox::Break));
  o.BMPauseTables = WholeNumber(Number(values, UnitBox::Pause));
  o.BMPauseMinutes = static_cast<float>(Val(Number(values, UnitBox::PauseMinutes)));
  o.BMPauseSound = sound_;
  o.TableTopUnit = UnitName(values);
  Guarded(parts_.errors, kPlace, [&] {
    parts_.table.SaveOptions({"BMSuggest", "BMUpdateSettings", "BMMinPerBoard", "BMBreak",
                              "BMOmitwarning1", "BMOmitwarning2", "BMSlowTables", "BMAutoMove",
                              "BMAutoPause", "BMPauseTables", "BMPauseSound", "BMPausePlay",
                              "TabletopUnit", "LogFile", "BMPauseMinutes"});
  });
  return {UnitBox::MinPerBoard, true};
}

}  // namespace corvanel
