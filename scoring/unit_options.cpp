#include "scoring/unit_options.h"

#include <algorithm>
#include <array>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr std::array<std::string_view, 2> kKnownUnits = {"Bridgemate", "BridgeTab"};

/// A number box: whether it takes fractions, and what is said of a number that is too large.
struct NumberBox {
  std::string_view key;
  bool fraction;
  const char* tooLarge;
};

constexpr const char* kTooManyMinutes = "The minutes must be 600 or less";
constexpr std::string_view kMinutesPerBoard = "BMMinPerBoard";

constexpr std::array kNumberBoxes = std::to_array<NumberBox>({
    {kMinutesPerBoard, true, kTooManyMinutes},
    {"BMBreak", false, kTooManyMinutes},
    {"BMPauseTables", false, "The number of tables must be 9999 or less"},
    {"BMPauseMinutes", true, kTooManyMinutes},
});

const NumberBox* BoxOf(std::string_view key) {
  const auto* found = std::find_if(kNumberBoxes.begin(), kNumberBoxes.end(),
                                   [&](const NumberBox& box) { return box.key == key; });
  return found == kNumberBoxes.end() ? nullptr : found;
}

}  // namespace

std::string UnitChoice::Name() const {
  if (optDesktop < 2) return std::string(kKnownUnits[static_cast<size_t>(optDesktop)]);
  return txtOther.empty() ? "DesktopUnit" : txtOther;
}

UnitChoice UnitOptions::Unit() const {
  const std::string& name = parts_.session.options.TableTopUnit;
  const auto* known = std::find(kKnownUnits.begin(), kKnownUnits.end(), name);
  const auto index = static_cast<int>(known - kKnownUnits.begin());
  return {index, known == kKnownUnits.end() ? name : ""};
}

std::vector<std::string> UnitOptions::NumberKeys() {
  std::vector<std::string> keys;
  keys.reserve(kNumberBoxes.size());
  for (const NumberBox& box : kNumberBoxes) keys.emplace_back(box.key);
  return keys;
}

bool UnitOptions::Takes(std::string_view key, char character) {
  return (character >= '0' && character <= '9') || (BoxOf(key)->fraction && character == '.');
}

bool UnitOptions::Leave(std::string_view key, const std::string& text) const {
  const double number = Val(text);
  const bool tooSmall = key == kMinutesPerBoard && number <= 0;
  const bool tooLarge = number > FindOptionKey(key)->greatest;
  if (tooSmall) parts_.prompts.Message("The minutes per board must be greater than 0");
  if (tooLarge) parts_.prompts.Message(BoxOf(key)->tooLarge);
  return !tooSmall && !tooLarge;
}

void UnitOptions::cmdSound_Click() {
  const auto file = parts_.prompts.ChooseFileToOpen("Choose a sound (wav) file",
                                                    parts_.session.ProgramFolder, "wav|*.wav");
  if (file) sound_ = *file;
}

void UnitOptions::cmdTest_Click() {
  parts_.sounds.Test(sound_);
}

std::optional<std::string> UnitOptions::cmdOK_Click(KeysAndValues texts, const UnitChoice& unit) {
  for (auto& [key, text] : texts) {
    if (BoxOf(key) == nullptr) continue;
    if (!Leave(key, text)) return key;
    text = SingleText(static_cast<float>(Val(text)));
  }
  // One that was not chosen stays a default that moves with the program.
  if (sound_ != parts_.session.options.BMPauseSound) texts.emplace_back("BMPauseSound", sound_);
  texts.emplace_back("TabletopUnit", unit.Name());
  Guarded(parts_.errors, "frmOptionsBridgemate.cmdOK_Click",
          [&] { parts_.table.TakeOptions(texts); });
  return std::nullopt;
}

}  // namespace corvanel
