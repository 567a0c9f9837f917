#include "settings/settings_table.h"

#include <fmt/format.h>

#include <algorithm>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr int16_t kFlagNotSet = 99;
constexpr int32_t kLeastWidth = 7000;  // twips
constexpr int32_t kLeastHeight = 5000;

}  // namespace

std::string SectionOfSet(int entry) {
  return entry == 0 ? "Timer" : fmt::format("Timer{:02}", entry);
}

std::string SectionOfElement(int element) {
  return fmt::format("TimerFont{}", element);
}

std::string SettingsTable::Fallback(std::string_view fallback) const {
  std::string text(fallback);
  return text.starts_with(kInProgramFolder) ? session_.ProgramFolder + text : text;
}

template <class Owner>
void SettingsTable::Load(const std::string& section, std::span<const SettingKey<Owner>> keys,
                         Owner& owner) {
  for (const SettingKey<Owner>& key : keys) {
    const FieldRef field = key.field(owner);
    const std::string fallback = Fallback(key.fallback);
    const bool isText = std::holds_alternative<std::string*>(field);
    const auto stored = store_.GetSetting(section, key.key);
    if (stored) {
      try {
        ReadField(field, *stored, key.least, key.greatest);
        continue;
      } catch (const RuntimeError& error) {
        NoteBadValue(error, section, key.key, *stored);
      }
    }
    if (isText || !fallback.empty()) ReadField(field, fallback, key.least, key.greatest);
  }
}

void SettingsTable::GetDefaults() {
  badValues_.clear();
  for (int entry = 0; entry <= kFavourites; ++entry) LoadSet(entry);

  favouriteInUse_ = 0;
  for (int entry = 1; entry <= kFavourites; ++entry) {
    if (!Entry(entry).Name.empty() && Entry(entry).Name == Entry(0).Name) favouriteInUse_ = entry;
  }
  // The favourite's own section counts, even where section "Timer" holds other values.
  currentName_ = favouriteInUse_ == 0 ? std::string() : Entry(favouriteInUse_).Name;
  ApplySettings(favouriteInUse_);

  Options& options = session_.options;
  Load(SectionOfSet(0), OptionKeys(), options);
  options.FormSizeX = std::max(options.FormSizeX, kLeastWidth);
  options.FormSizeY = std::max(options.FormSizeY, kLeastHeight);
  session_.elements = DefaultElementStyles();
  for (int element = 0; element < kElements; ++element) {
    Load(SectionOfElement(element), ElementKeys(), session_.elements[static_cast<size_t>(element)]);
  }
  ReportBadValues();
}

void SettingsTable::LoadSet(int entry) {
  SettingsSet& set = entries_[static_cast<size_t>(entry)];
  const std::string section = SectionOfSet(entry);
  set = SettingsSet{};
  if (entry > 0 && store_.GetSetting(section, "Name").value_or("").empty()) return;
  Load(section, SetKeys(), set);
  CheckTimes(set, section);
  FillInSounds(entry);
}

/// Texts that must be more than texts: the required finish is a time, kept only where it is used.
void SettingsTable::CheckTimes(SettingsSet& set, const std::string& section) {
  SessionSettings& s = set.settings;
  s.MinBetweenRounds = std::max(s.MinBetweenRounds, kShortestMove);
  if (s.Calculate == 0) s.RequiredFinish.clear();
  if (s.RequiredFinish.empty()) return;
  if (const auto time = ParseTime(s.RequiredFinish)) {
    s.RequiredFinish = TimeText(*time);
    return;
  }
  NoteBadValue(RuntimeError::TypeMismatch(), section, "RequiredFinish", s.RequiredFinish);
  s.RequiredFinish = SessionSettings{}.RequiredFinish;
}

/// The first three sounds and switches, where a set does not name its own, are those of the set in
/// use; and that one's are those that ship with the program.
void SettingsTable::FillInSounds(int entry) {
  constexpr size_t kFilled = 3;
  SoundChoices& sounds = entries_[static_cast<size_t>(entry)].settings.sounds;
  const SoundChoices& inUse = entries_[0].settings.sounds;
  for (size_t i = 0; i < kFilled; ++i) {
    if (sounds.files[i].empty()) {
      sounds.files[i] = entry == 0 ? Fallback(kDefaultSounds[i]) : inUse.files[i];
    }
    if (sounds.play[i] == kFlagNotSet) sounds.play[i] = entry == 0 ? int16_t{-1} : inUse.play[i];
  }
  // An empty name would silence the cue without anybody having switched it off.
  for (size_t i = kFilled; i < kCues; ++i) {
    if (sounds.files[i].empty()) sounds.files[i] = Fallback(kDefaultSounds[i]);
  }
}

void SettingsTable::NoteBadValue(const RuntimeError& error, const std::string& section,
                                 std::string_view key, const std::string& value) {
  if (badValues_.empty()) firstBadNumber_ = error.Number();
  badValues_.push_back(
      fmt::format("{}: {} \"{:.40}\" in section {}", error.what(), key, value, section));
}

void SettingsTable::ReportBadValues() {
  if (badValues_.empty()) return;
  constexpr size_t kMostNamed = 12;
  std::string text;
  for (size_t i = 0; i < std::min(badValues_.size(), kMostNamed); ++i)
    text += badValues_[i] + "\r\n";
  if (badValues_.size() > kMostNamed) {
    text += fmt::format("and {} more\r\n", badValues_.size() - kMostNamed);
  }
  store_.KeepAsDamaged();
  errors_.ReportError("frmMain.GetDefaults",
                      RuntimeError(firstBadNumber_, text + "The defaults are used."), 0);
}

void SettingsTable::SaveDefaults() {
  for (int entry = 0; entry <= kFavourites; ++entry) {
    SettingsSet& set = entries_[static_cast<size_t>(entry)];
    if (entry > 0 && set.Name.empty()) continue;
    for (const auto& key : SetKeys()) {
      store_.SaveSetting(SectionOfSet(entry), key.key, FieldText(key.field(set)));
    }
  }
  SaveOptions({"ShowTitle"});
}

void SettingsTable::SaveOptions(std::initializer_list<std::string_view> keys) {
  for (const std::string_view name : keys) {
    for (const auto& key : OptionKeys()) {
      if (!SameName(key.key, name)) continue;
      store_.SaveSetting(SectionOfSet(0), name, FieldText(key.field(session_.options)));
    }
  }
  store_.Flush();
}

void SettingsTable::CaptureSettings(int entry) {
  entries_[static_cast<size_t>(entry)] = {currentName_, session_.settings};
}

void SettingsTable::UseFavourite(int slot, const std::string& name) {
  favouriteInUse_ = slot;
  currentName_ = name;
  entries_[0].Name = name;
}

int SettingsTable::FreeSlot() const {
  for (int slot = 1; slot <= kFavourites; ++slot) {
    if (Entry(slot).Name.empty()) return slot;
  }
  return 0;
}

void SettingsTable::DeleteFavourite(int slot) {
  entries_[static_cast<size_t>(slot)].Name.clear();
  store_.DeleteSection(SectionOfSet(slot));
}

void SettingsTable::ApplySettings(int entry) {
  session_.settings = Entry(entry).settings;
}

void SettingsTable::SaveSession() {
  CaptureSettings(0);
  SaveDefaults();
}

void SettingsTable::SaveDisplayOptions() {
  for (int element = 0; element < kElements; ++element) {
    ElementStyle& style = session_.elements[static_cast<size_t>(element)];
    for (const auto& key : ElementKeys()) {
      store_.SaveSetting(SectionOfElement(element), key.key, FieldText(key.field(style)));
    }
  }
  SaveOptions({"Show0", "Show1", "Show2", "Show3", "Show8", "BMShowInfo", "BMShowProgress",
               "BMShowTables", "BMControl", "LogFile", "TimeAs24hour", "TimeChange"});
}

std::vector<std::string> SettingsTable::FavouriteNames() const {
  std::vector<std::string> names;
  for (const SettingsSet& set : entries_) {
    if (&set != &entries_.front() && !set.Name.empty()) names.push_back(set.Name);
  }
  return names;
}

}  // namespace corvanel
