#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "basics/runtime_error.h"
#include "session/session.h"
#include "settings/setting_keys.h"
#include "settings/settings_store.h"

namespace corvanel {

constexpr int kFavourites = 20;

/// The store's section of a set: "Timer" for 0, "Timer01" to "Timer20" for the favourites.
std::string SectionOfSet(int entry);
/// The store's section of a display element, by its number 0 to 9.
std::string SectionOfElement(int element);

/// The options as a store has them; what it does not hold, or holds wrongly, is as it ships.
Options StoredOptions(const SettingsStore& store);

/// The table of 21 settings sets (entry 0 the set in use, 1 to 20 the favourites; a favourite
/// without a name is a free slot), and the way between store, table and live session.
class SettingsTable {
 public:
  SettingsTable(SettingsStore& store, Session& session, ErrorTrap& errors)
      : store_(store), session_(session), errors_(errors) {}

  /// Loads sets, options and display fonts and applies the set in use to the live session. A value
  /// that does not convert takes its default; one report names all such values.
  void GetDefaults();
  /// Writes entry 0 and every favourite, then ShowTitle. Throws RuntimeError when the store
  /// cannot be written; the table is unchanged.
  void SaveDefaults();
  /// Copies the live settings and the name of the favourite in use into an entry, 0 to 20.
  void CaptureSettings(int entry);
  /// Copies an entry, 0 to 20, into the live settings.
  void ApplySettings(int entry);

  /// Copies the live settings into the set in use and writes the store.
  void SaveSession();
  /// Writes fonts and colours of all ten display elements, and these options of the displays.
  void SaveDisplayOptions(const std::vector<std::string>& keys);

  /// Writes options by their keys, in this spelling and the order of the key table. Throws
  /// RuntimeError when the store cannot be written, std::out_of_range when there is no such key.
  void SaveOptions(std::vector<std::string> keys);
  /// Takes options over from texts, and writes them. As above.
  void TakeOptions(const KeysAndValues& texts);

  const SettingsSet& Entry(int entry) const { return entries_[static_cast<size_t>(entry)]; }
  /// The slot of the favourite in use, 1 to 20; 0 when there is none.
  int FavouriteInUse() const { return favouriteInUse_; }
  /// The name of the favourite in use; empty when there is none.
  const std::string& CurrentName() const { return currentName_; }
  /// Makes a slot (0: none) and a name the favourite in use; the set in use takes the name.
  void UseFavourite(int slot, const std::string& name);
  /// The first slot without a name; 0 when all are taken.
  int FreeSlot() const;
  /// Frees a slot and deletes its section from the store, to last from the next Flush on.
  void DeleteFavourite(int slot);
  /// The names of the favourites in slot order.
  std::vector<std::string> FavouriteNames() const;

 private:
  void LoadSet(int entry);
  SettingsSet Defaults(int entry) const;
  template <class Owner>
  void Load(const std::string& section, std::span<const SettingKey<Owner>> keys, Owner& owner);
  void NoteBadValue(const RuntimeError& error, const std::string& section, std::string_view key,
                    const std::string& value);
  void ReportBadValues();

  SettingsStore& store_;
  Session& session_;
  ErrorTrap& errors_;
  std::array<SettingsSet, kFavourites + 1> entries_;
  int favouriteInUse_ = 0;
  std::string currentName_;
  // Values that did not convert: the error number of the first, and all of them for people.
  int firstBadNumber_ = 0;
  std::vector<std::string> badValues_;
};

}  // namespace corvanel
