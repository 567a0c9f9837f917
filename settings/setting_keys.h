#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "session/session.h"

namespace corvanel {

/// The place of a value in memory; its type says how the store's text is read and written.
using FieldRef = std::variant<std::string*, int16_t*, int32_t*, float*, bool*>;

/// One key of the store: its name, the text that stands for it when it is absent (empty for a
/// text, or "keep what is held" for a number), where its value lives, and the least and greatest
/// value of a number.
template <class Owner>
struct SettingKey {
  std::string_view key;
  std::string_view fallback;
  FieldRef (*field)(Owner&);
  double least = -32768;
  double greatest = 32767;
};

/// Default texts that begin with this sign are files of the program folder.
constexpr char kInProgramFolder = '\\';

/// One complete set of session settings, in use or a favourite.
struct SettingsSet {
  std::string Name;
  SessionSettings settings;

  bool operator==(const SettingsSet&) const = default;
};

/// The keys of a set, in the order in which they are loaded and saved.
std::span<const SettingKey<SettingsSet>> SetKeys();
/// The program-wide keys of section "Timer".
std::span<const SettingKey<Options>> OptionKeys();
/// The keys of a "TimerFont" section.
std::span<const SettingKey<ElementStyle>> ElementKeys();

/// Reads the store's text into the field: numbers with "." or ",", booleans in any spelling.
/// Throws RuntimeError (13 when it does not convert, 6 when it is out of range) and leaves the
/// field unchanged.
void ReadField(FieldRef field, std::string_view text, double least, double greatest);
/// The text under which the field is stored.
std::string FieldText(FieldRef field);

}  // namespace corvanel
