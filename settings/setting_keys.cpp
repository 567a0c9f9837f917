#include "settings/setting_keys.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <stdexcept>
#include <type_traits>

#include "basics/numbers.h"
#include "basics/runtime_error.h"

namespace corvanel {
namespace {

constexpr double kMost16 = 32767;
constexpr double kMost32 = 2e9;
constexpr double kTwips = 1e7;  // no screen is wider
constexpr double kNotSet = 99;  // of a switch: it keeps its default

/// How a switch is written.
enum class Switch { Words, MinusOne, One };

/// The whole text as a number, with either decimal separator. Throws Type mismatch.
double NumberIn(std::string_view text) {
  text = Trimmed(text);
  if (SameName(text, "True")) return -1;
  if (SameName(text, "False")) return 0;
  std::string plain(text.starts_with('+') ? text.substr(1) : text);
  if (const size_t comma = plain.find(','); comma != std::string::npos) plain[comma] = '.';
  double value = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (error == std::errc::result_out_of_range) throw RuntimeError::Overflow();
  if (error != std::errc() || end != plain.data() + plain.size() || !std::isfinite(value)) {
    throw RuntimeError::TypeMismatch();
  }
  return value;
}

double NumberIn(std::string_view text, double least, double greatest) {
  const double value = NumberIn(text);
  if (value < least || value > greatest) throw RuntimeError::Overflow();
  return value;
}

// The form of each type in the store.

template <Switch>
std::string Text(const std::string& value) {
  return value;
}
template <Switch>
std::string Text(const RoundList& value) {
  return value.Text();
}
template <Switch>
std::string Text(const std::optional<ClockTime>& value) {
  return value ? TimeText(*value) : "";
}
template <Switch form>
std::string Text(bool value) {
  if (form == Switch::Words) return value ? "True" : "False";
  return !value ? "0" : form == Switch::One ? "1" : "-1";
}
template <Switch>
std::string Text(std::integral auto value) {
  return std::to_string(value);
}
template <Switch>
std::string Text(float value) {
  return SingleText(value);
}
template <Switch>
std::string Text(Colour value) {
  return std::to_string(value.Stored());
}

void Take(std::string& value, std::string_view text, double, double) {
  value = text;
}
void Take(RoundList& value, std::string_view text, double, double) {
  value = std::string(text);
}
void Take(std::optional<ClockTime>& value, std::string_view text, double, double) {
  const auto time = ParseTime(text);
  if (!time && !text.empty()) throw RuntimeError::TypeMismatch();
  value = time ? std::optional(ToTheMinute(*time)) : std::nullopt;
}
void Take(bool& value, std::string_view text, double, double) {
  const double number = NumberIn(text);
  if (number != kNotSet) value = number != 0;
}
void Take(std::integral auto& value, std::string_view text, double least, double greatest) {
  // Whole numbers are rounded, an exact half to the even one.
  value = static_cast<std::remove_reference_t<decltype(value)>>(
      std::nearbyint(NumberIn(text, least, greatest)));
}
void Take(float& value, std::string_view text, double least, double greatest) {
  value = static_cast<float>(NumberIn(text, least, greatest));
}
void Take(Colour& value, std::string_view text, double, double) {
  value = Colour::FromStored(static_cast<int32_t>(NumberIn(text, 0, 0xFFFFFF)));
}

/// What a path of members and indices leads to.
template <auto step, auto... steps>
auto& At(auto& owner) {
  const auto next = [](auto& from) -> auto& {
    if constexpr (std::is_member_object_pointer_v<decltype(step)>) {
      return from.*step;
    } else {
      return from[step];
    }
  };
  if constexpr (sizeof...(steps) == 0) {
    return next(owner);
  } else {
    return At<steps...>(next(owner));
  }
}

template <class Owner, Switch form, auto... path>
constexpr SettingKey<Owner> KeyOf(std::string_view key, double least, double greatest) {
  return {key, [](const Owner& owner) { return Text<form>(At<path...>(owner)); },
          [](Owner& owner, std::string_view text, double from, double to) {
            Take(At<path...>(owner), text, from, to);
          },
          least, greatest};
}

/// The keys of an owner, by what they are stored as.
template <class Owner>
struct Keys {
  template <auto... path>
  static constexpr auto Value(std::string_view key, double least = -kMost16 - 1,
                              double greatest = kMost16) {
    return KeyOf<Owner, Switch::Words, path...>(key, least, greatest);
  }
  template <auto... path>
  static constexpr auto MinusOne(std::string_view key) {
    return KeyOf<Owner, Switch::MinusOne, path...>(key, 0, 0);
  }
  template <auto... path>
  static constexpr auto One(std::string_view key) {
    return KeyOf<Owner, Switch::One, path...>(key, 0, 0);
  }
};

using Set = Keys<SettingsSet>;
using S = SessionSettings;

template <Cue cue>
constexpr auto File(std::string_view key) {
  return Set::Value<&S::sounds, &SoundChoices::files, static_cast<size_t>(cue)>(key);
}
template <size_t flag>
constexpr auto Play(std::string_view key) {
  return Set::MinusOne<&S::sounds, &SoundChoices::play, flag>(key);
}
template <size_t warning>
constexpr auto PlayFinal(std::string_view key) {
  return Set::MinusOne<&S::sounds, &SoundChoices::playFinalRound, warning>(key);
}

constexpr std::array kSetKeys = {
    Set::Value<&SettingsSet::Name>("Name"),
    Set::Value<&S::nRounds>("nRounds", 1),
    Set::Value<&S::MinPerRound>("MinPerRound", 0, kMinutesPerDay),
    Set::Value<&S::MinBetweenRounds>("MinBetweenRounds", 0, kLongestPhase),
    Set::Value<&S::MinWarning>("MinWarning", 0, kLongestPhase),
    Set::Value<&S::MinWarning1>("MinWarning1", 0, kLongestPhase),
    Set::Value<&S::Skip>("Skip"),
    Set::Value<&S::Arrow>("Arrow"),
    Set::Value<&S::optBreak>("optBreak"),
    Set::Value<&S::BreakAfterRound>("BreakAfterRound", 0),
    Set::Value<&S::MoveAfterBreak>("MoveAfterBreak"),
    Set::Value<&S::TimeForBreak>("TimeForBreak", 0, kLongestPhase),
    Set::MinusOne<&S::ExtraMonitor>("ExtraMonitor"),
    Set::Value<&S::Calculate>("Calculate", 0, 1),
    Set::Value<&S::Header>("Header"),
    Set::Value<&S::RequiredFinish>("RequiredFinish"),
    File<Cue::LastWarning>("SoundWarning"),
    File<Cue::EarlyWarning>("SoundWarning1"),
    File<Cue::EndOfRound>("SoundEndOfRound"),
    File<Cue::Break>("SoundBreak"),
    File<Cue::Skip>("SoundSkip"),
    File<Cue::Arrow>("SoundArrow"),
    File<Cue::EndOfBreak>("SoundEndOfBreak"),
    Play<0>("SoundPlay0"),
    // Deliberate: the keys of flags 1 and 2 are crossed; stores and settings files have them so.
    Play<2>("SoundPlay1"),
    Play<1>("SoundPlay2"),
    Play<3>("SoundPlayBreak"),
    Play<4>("SoundPlaySkip"),
    Play<5>("SoundPlayArrow"),
    Play<6>("SoundPlayEndOfBreak"),
    PlayFinal<0>("SoundPlay0FR"),
    PlayFinal<1>("SoundPlay1FR"),
};

using Option = Keys<Options>;
using O = Options;

constexpr std::array kOptionKeys = {
    Option::One<&O::AutoShutdown>("AutoShutdown"),
    Option::Value<&O::AutoLaunch>("AutoLaunch"),
    Option::Value<&O::AutoUpdate>("AutoUpdate"),
    Option::Value<&O::OnTop>("OnTop"),
    Option::Value<&O::ShowTitle>("ShowTitle"),
    Option::Value<&O::ShowMessage>("ShowMessage", 0, kMost32),
    Option::Value<&O::BWSfolder>("BWSfolder"),
    Option::Value<&O::BMSuggest>("BMSuggest"),
    Option::Value<&O::BMUpdateSettings>("BMUpdateSettings"),
    Option::Value<&O::BMMinPerBoard>("BMMinPerBoard", 0, kLongestPhase),
    Option::Value<&O::BMBreak>("BMBreak", 0, kLongestPhase),
    Option::Value<&O::BMOmitwarning1>("BMOmitwarning1"),
    Option::Value<&O::BMOmitwarning2>("BMOmitwarning2"),
    Option::Value<&O::BMSlowTables>("BMSlowTables"),
    Option::Value<&O::BMAutoMove>("BMAutoMove"),
    Option::Value<&O::BMAutoPause>("BMAutoPause"),
    Option::Value<&O::BMPauseTables>("BMPauseTables", 0, kMostTables),
    Option::Value<&O::BMPauseSound>("BMPauseSound"),
    Option::Value<&O::BMPausePlay>("BMPausePlay"),
    Option::Value<&O::TableTopUnit>("TableTopUnit"),
    Option::MinusOne<&O::DisplayState>("DisplayState"),
    Option::Value<&O::FormX>("FormX", -kTwips, kTwips),
    Option::Value<&O::FormY>("FormY", -kTwips, kTwips),
    Option::Value<&O::FormSizeX>("FormSizeX", -kTwips, kTwips),
    Option::Value<&O::FormSizeY>("FormSizeY", -kTwips, kTwips),
    Option::One<&O::Show, size_t{0}>("Show0"),
    Option::One<&O::Show, size_t{1}>("Show1"),
    Option::One<&O::Show, size_t{2}>("Show2"),
    Option::One<&O::Show, size_t{3}>("Show3"),
    Option::One<&O::Show, kShowTitle>("Show8"),
    Option::One<&O::BMShowInfo>("BMShowInfo"),
    Option::One<&O::BMShowProgress>("BMShowProgress"),
    Option::One<&O::BMShowTables>("BMShowTables"),
    Option::One<&O::BMControl>("BMControl"),
    Option::MinusOne<&O::LogFile>("LogFile"),
    Option::Value<&O::BMPauseMinutes>("BMPauseMinutes", 0, kLongestPhase),
    Option::Value<&O::TimeAs24hour>("TimeAs24hour"),
    Option::Value<&O::TimeChange>("TimeChange"),
    Option::Value<&O::HintsGiven>("HintsGiven"),
    Option::Value<&O::NetworkOn>("NetworkOn"),
    Option::Value<&O::NetworkPort>("NetworkPort", kLeastPort, kGreatestPort),
    Option::Value<&O::NetworkAddress>("NetworkAddress"),
    Option::Value<&O::NetworkShowCode>("NetworkShowCode"),
    Option::Value<&O::NetworkRoom>("NetworkRoom"),
    Option::Value<&O::NetworkBroker>("NetworkBroker"),
    Option::Value<&O::NetworkBrokerPassword>("NetworkBrokerPassword"),
};

using Style = Keys<ElementStyle>;
using E = ElementStyle;

constexpr std::array kElementKeys = {
    Style::Value<&E::Name>("Name"),
    Style::Value<&E::Size>("Size", 1, 2000),
    Style::Value<&E::Bold>("Bold"),
    Style::Value<&E::Italic>("Italic"),
    Style::Value<&E::Strikethrough>("Strikethrough"),
    Style::Value<&E::Underline>("Underline"),
    Style::Value<&E::Forecolour>("Forecolour"),
    Style::Value<&E::Backcolour>("Backcolour"),
};

template <class Owner>
const SettingKey<Owner>* Find(std::span<const SettingKey<Owner>> keys, std::string_view name) {
  const auto found = std::find_if(keys.begin(), keys.end(),
                                  [&](const auto& key) { return SameName(key.key, name); });
  return found == keys.end() ? nullptr : &*found;
}

}  // namespace

std::span<const SettingKey<SettingsSet>> SetKeys() {
  return kSetKeys;
}
std::span<const SettingKey<Options>> OptionKeys() {
  return kOptionKeys;
}
std::span<const SettingKey<ElementStyle>> ElementKeys() {
  return kElementKeys;
}

const SettingKey<SettingsSet>* FindSetKey(std::string_view name) {
  return Find(SetKeys(), name);
}
const SettingKey<Options>* FindOptionKey(std::string_view name) {
  return Find(OptionKeys(), name);
}

namespace {

const SettingKey<Options>& OptionKey(std::string_view name) {
  const SettingKey<Options>* key = FindOptionKey(name);
  if (key == nullptr) throw std::out_of_range("no setting " + std::string(name));
  return *key;
}

}  // namespace

std::string OptionText(const Options& options, std::string_view name) {
  return OptionKey(name).text(options);
}

void ReadOption(Options& options, std::string_view name, std::string_view text) {
  OptionKey(name).Read(options, text);
}

}  // namespace corvanel
