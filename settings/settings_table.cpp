#include "settings/settings_table.h"

#include <fmt/format.h>

#include <algorithm>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr size_t kFilled = 3;          // sounds that a favourite takes over from the set in use
constexpr int32_t kLeastWidth = 7000;  // twips
constexpr int32_t kLeastHeight = 5000;

}  // namespace

std::string SectionOfSet(int entry) {
  return entry == 0 ? "Timer" : fmt::format("Timer{:02}", entry);
}

std::string SectionOfElement(int element) {
  return fmt::format("TimerFont{}", element);
}

Options StoredOptions(const SettingsStore& store) {
  Options options;
  for (const auto& key : OptionKeys()) {
    try {
      if (const auto stored = store.GetSetting(SectionOfSet(0), key.key))
        key.Read(options, *stored);
    } catch (const RuntimeError&) {
      // Told when the store is loaded.
      continue;
    }
  }
  return options;
}

template <class Owner>
void SettingsTable::Load(const std::string& section, std::span<const SettingKey<Owner>> keys,
                         Owner& owner) {
  for (const SettingKey<Owner>& key : keys) {
    const auto stored = store_.GetSetting(section, key.key);
    if (!stored) continue;
    try {
      key.Read(owner, *stored);
    } catch (const RuntimeError& error) {
      NoteBadValue(error, section, key.key, *stored);
    }
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
  const auto width = options.FormSizeX;  // these two keep the value already held
  const auto height = options.FormSizeY;
  options = {};
  options.FormSizeX = width;
  options.FormSizeY = height;
  options.BMPauseSound = session_.ProgramFolder + std::string(kDefaultPauseSound);
  Load(SectionOfSet(0), OptionKeys(), options);
  options.FormSizeX = std::max(options.FormSizeX, kLeastWidth);
  options.FormSizeY = std::max(options.FormSizeY, kLeastHeight);
  session_.elements = DefaultElementStyles();
  for (int element = 0; element < kElements; ++element) {
    Load(SectionOfElement(element), ElementKeys(), session_.elements[static_cast<size_t>(element)]);
  }
  ReportBadValues();
}

/// What stands for what an entry does not say. The first three sounds and switches are those of the
/// set in use; all else is as the program ships.
SettingsSet SettingsTable::Defaults(int entry) const {
  SettingsSet set;
  for (size_t i = 0; i < kCues; ++i) {
    set.sounds.files[i] = session_.ProgramFolder + std::string(kDefaultSounds[i]);
  }
  const SoundChoices& inUse = entries_[0].sounds;
  for (size_t i = 0; entry > 0 && i < kFilled; ++i) {
    set.sounds.files[i] = inUse.files[i];
    set.sounds.play[i] = inUse.play[i];
  }
  return set;
}

void SettingsTable::LoadSet(int entry) {
  SettingsSet& set = entries_[static_cast<size_t>(entry)];
  const std::string section = SectionOfSet(entry);
  const bool freeSlot = entry > 0 && store_.GetSetting(section, "Name").value_or("").empty();
  const SettingsSet defaults = Defaults(entry);
  set = freeSlot ? SettingsSet{} : defaults;
  if (freeSlot) return;
  Load(section, SetKeys(), set);
  set.MinBetweenRounds = std::max(set.MinBetweenRounds, kShortestMove);
  // The required finish is kept only where it is used.
  if (set.Calculate == 0) set.RequiredFinish.reset();
  // An empty name would silence the cue without anybody having switched it off.
  for (size_t i = 0; i < kCues; ++i) {
    if (set.sounds.files[i].empty()) set.sounds.files[i] = defaults.sounds.files[i];
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
    const SettingsSet& set = Entry(entry);
    if (entry > 0 && set.Name.empty()) continue;
    for (const auto& key : SetKeys()) {
      store_.SaveSetting(SectionOfSet(entry), key.key, key.text(set));
    }
  }
  SaveOptions({"ShowTitle"});
}

void SettingsTable::SaveOptions(std::vector<std::string> keys) {
  std::stable_sort(keys.begin(), keys.end(), [](const std::string& a, const std::string& b) {
    return FindOptionKey(a) < FindOptionKey(b);  // rows of one table
  });
  for (const std::string& key : keys) {
    store_.SaveSetting(SectionOfSet(0), key, OptionText(session_.options, key));
  }
  store_.Flush();
}

void SettingsTable::TakeOptions(const KeysAndValues& texts) {
  std::vector<std::string> keys;
  for (const auto& [key, text] : texts) {
    ReadOption(session_.options, key, text);
    keys.push_back(key);
  }
  SaveOptions(keys);
}

void SettingsTable::CaptureSettings(int entry) {
  entries_[static_cast<size_t>(entry)] = {session_.settings, currentName_};
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
  session_.settings = Entry(entry);
}

void SettingsTable::SaveSession() {
  CaptureSettings(0);
  SaveDefaults();
}

void SettingsTable::SaveDisplayOptions(const std::vector<std::string>& keys) {
  for (int element = 0; element < kElements; ++element) {
    const ElementStyle& style = session_.elements[static_cast<size_t>(element)];
    for (const auto& key : ElementKeys()) {
      store_.SaveSetting(SectionOfElement(element), key.key, key.text(style));
    }
  }
  SaveOptions(keys);
}

std::vector<std::string> SettingsTable::FavouriteNames() const {
  std::vector<std::string> names;
  for (const SettingsSet& set : entries_) {
    if (&set != &entries_.front() && !set.Name.empty()) names.push_back(set.Name);
  }
  return names;
}

}  // namespace corvanel
