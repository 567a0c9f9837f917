#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvanel {

using KeysAndValues = std::vector<std::pair<std::string, std::string>>;

/// The per-user store of the application: sections of keys, every value a text. Section and key
/// names compare without case; the order in which keys were first written is kept.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  /// Nothing when the section has no such key.
  virtual std::optional<std::string> GetSetting(std::string_view section,
                                                std::string_view key) const = 0;
  virtual KeysAndValues GetAllSettings(std::string_view section) const = 0;

  /// Changes take effect in the store at once and last from the next Flush on.
  virtual void SaveSetting(std::string_view section, std::string_view key,
                           std::string_view value) = 0;
  virtual void DeleteSection(std::string_view section) = 0;

  /// Has every change made durable: after it the store holds all of them, or after a failure or a
  /// power cut the state of the last Flush. May throw RuntimeError when it cannot write, or tell of
  /// it later.
  virtual void Flush() = 0;

  /// The store held values that cannot be used: the next Flush keeps it as it was, beside the new
  /// one.
  virtual void KeepAsDamaged() = 0;

  /// Keeps a dated copy of the store as it is, beside it. Returns where, for people to read.
  /// Throws RuntimeError when it cannot.
  virtual std::string KeepCopy() = 0;
  /// Brings back the copy that was kept last, durably. False when there is none.
  virtual bool RestoreCopy() = 0;
};

}  // namespace corvanel
