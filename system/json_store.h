#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "settings/settings_store.h"

namespace corvanel {

/// The settings store on systems without a registry: one JSON file, written whole to a temporary
/// file, flushed and renamed, so that a power cut leaves the old or the new one.
///
/// A file that is damaged is read as far as it goes. The first Flush after that moves it aside,
/// under its own name with ".damaged" and a number, before it writes a new one. A file that
/// somebody else has changed since it was read is replaced too, and kept under its name with
/// ".outside-" and the date.
class JsonStore : public SettingsStore {
 public:
  /// Reads `file`; a missing one is an empty store.
  explicit JsonStore(std::filesystem::path file);

  /// What was wrong with the file when it was read, in one line; empty when nothing was.
  const std::string& Damage() const { return damage_; }
  /// Where the file as somebody else had changed it is kept, when a Flush found it so; else empty.
  const std::string& OutsideChange() const { return outsideChange_; }

  std::optional<std::string> GetSetting(std::string_view section,
                                        std::string_view key) const override;
  KeysAndValues GetAllSettings(std::string_view section) const override;
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override;
  void DeleteSection(std::string_view section) override;
  void Flush() override;
  void KeepAsDamaged() override;
  std::string KeepCopy() override;
  bool RestoreCopy() override;

 private:
  struct Section {
    std::string name;
    KeysAndValues values;
  };
  friend class StoreReader;

  void Read();
  std::filesystem::path NewestCopy() const;
  std::filesystem::path FreeName(const char* mark) const;
  std::string Stamp() const;
  void KeepOutsideChange();
  void KeepDamagedFile();
  std::string Text() const;
  const Section* Find(std::string_view section) const;

  std::filesystem::path file_;
  std::vector<Section> sections_;
  std::string damage_;
  bool damagedFileInPlace_ = false;
  std::string stamp_;  // of the file as it was last read or written here
  std::string outsideChange_;
};

}  // namespace corvanel
