#pragma once

#include <string>
#include <vector>

#include "basics/result.h"
#include "settings/settings_store.h"

namespace corvanel {

/// What became of an export.
struct ExportOutcome {
  std::string bytes;  // of the file
  /// Keys whose values held a quote, which the file cannot represent; it holds ' in its place.
  std::vector<std::string> changed;
};

/// The whole store as a settings file: quoted, comma-separated records, lines ended by carriage
/// return and line feed, in code page 1252, or in UTF-8 with a byte-order mark where a value has
/// characters beyond it. Sections without keys are left out.
ExportOutcome ExportSettings(const SettingsStore& store);

/// Reads a settings file into the store, which is cleared first: an import replaces, it never
/// merges. True when the whole file was read; else the store holds what came before the fault.
/// Nothing is flushed.
bool ImportSettings(std::string bytes, SettingsStore& store);

/// A text that is in UTF-8, or else in code page 1252, as UTF-8.
std::string AsUtf8(const std::string& text);

/// Whole files.
class FileAccess {
 public:
  virtual ~FileAccess() = default;
  virtual Result<std::string> ReadFile(const std::string& path) = 0;
  /// The error when the file could not be written; what was written of it stays.
  virtual Status WriteFile(const std::string& path, const std::string& bytes) = 0;
  virtual Status Rename(const std::string& from, const std::string& to) = 0;
  virtual Status Remove(const std::string& path) = 0;
};

}  // namespace corvanel
