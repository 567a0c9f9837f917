#pragma once

#include <span>
#include <string>
#include <string_view>

#include "session/session.h"

namespace corvanel {

/// One key of the store: the one place where a setting has its name, the form of its text and the
/// range of its value. Its default is the one of its owner's declaration.
template <class Owner>
struct SettingKey {
  std::string_view key;
  /// The text under which the value is stored.
  std::string (*text)(const Owner&);
  /// Takes the value over from the store's text, in any spelling. Throws RuntimeError (13 when it
  /// does not convert, 6 when it is out of range) and leaves the owner unchanged.
  void (*read)(Owner&, std::string_view text, double least, double greatest);
  double least;
  double greatest;

  void Read(Owner& owner, std::string_view stored) const { read(owner, stored, least, greatest); }
};

constexpr double kMostTables = 9999;  // that a pause can wait for

/// One complete set of session settings, in use or a favourite.
struct SettingsSet : SessionSettings {
  std::string Name;

  bool operator==(const SettingsSet&) const = default;
};

/// The keys of a set, in the order in which they are loaded and saved.
std::span<const SettingKey<SettingsSet>> SetKeys();
/// The program-wide keys of section "Timer".
std::span<const SettingKey<Options>> OptionKeys();
/// The keys of a "TimerFont" section.
std::span<const SettingKey<ElementStyle>> ElementKeys();

/// The key of that name, without regard to case; null when there is none.
const SettingKey<SettingsSet>* FindSetKey(std::string_view name);
const SettingKey<Options>* FindOptionKey(std::string_view name);

/// An option by the name of its key, as its text. Throw std::out_of_range when there is no such
/// key; ReadOption as SettingKey::Read.
std::string OptionText(const Options& options, std::string_view name);
void ReadOption(Options& options, std::string_view name, std::string_view text);

}  // namespace corvanel
