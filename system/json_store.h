#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "settings/settings_store.h"
#include "system/disk_writer.h"

namespace corvanel {

/// The settings store: one JSON file, written whole to a temporary
/// file, flushed and renamed, so that a power cut leaves the old or the new one. The writer does
/// that by and by: a Flush waits for nothing and throws nothing.
///
/// A file that is damaged is read as far as it goes. The first Flush after that moves it aside,
/// under its own name with ".damaged" and a number, before it writes a new one. A file that
/// somebody else has changed since it was read is replaced too, and kept under its name with
/// ".outside-" and the date.
class JsonStore : public SettingsStore {
 public:
  /// Reads `file`; a missing one is an empty store.
  JsonStore(const std::filesystem::path& file, DiskWriter& writer);

  /// What was wrong with the file when it was read, in one line; empty when nothing was.
  const std::string& Damage() const { return damage_; }
  /// Where the file as somebody else had changed it is kept, when a Flush found it so; else empty.
  std::string OutsideChange() const;
  /// Why the last Flush could not write; nothing when it could, or is still on its way.
  std::optional<RuntimeError> Failure() const { return writer_.Failure(kName); }

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
  static constexpr const char* kName = "store";  // of the writer's job
  struct Section {
    std::string name;
    KeysAndValues values;
  };
  class File;

  void Read();
  std::string Text() const;
  const Section* Find(std::string_view section) const;

  const std::filesystem::path path_;
  DiskWriter& writer_;
  std::shared_ptr<File> file_;  // shared with the writer
  std::vector<Section> sections_;
  std::string damage_;
};

}  // namespace corvanel
