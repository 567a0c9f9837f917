#include "settings/setting_keys.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>

#include "basics/numbers.h"
#include "basics/runtime_error.h"

namespace corvanel {
namespace {

using S = SettingsSet&;
using O = Options&;
using E = ElementStyle&;

template <Cue cue>
FieldRef File(S s) {
  return &s.settings.sounds.files[static_cast<size_t>(cue)];
}

template <size_t flag>
FieldRef Play(S s) {
  return &s.settings.sounds.play[flag];
}

template <size_t flag>
FieldRef Show(O o) {
  return &o.Show[flag];
}

constexpr double kRounds = 32767;
constexpr double kTwips = 1e7;  // no screen is wider

constexpr std::array kSetKeys = std::to_array<SettingKey<SettingsSet>>({
    {"Name", "", [](S s) -> FieldRef { return &s.Name; }},
    {"nRounds", "12", [](S s) -> FieldRef { return &s.settings.nRounds; }, 1, kRounds},
    {"MinPerRound", "15", [](S s) -> FieldRef { return &s.settings.MinPerRound; }, 0,
     kMinutesPerDay},
    {"MinBetweenRounds", "1", [](S s) -> FieldRef { return &s.settings.MinBetweenRounds; }, 0,
     kLongestPhase},
    {"MinWarning", "3", [](S s) -> FieldRef { return &s.settings.MinWarning; }, 0, kLongestPhase},
    {"MinWarning1", "7", [](S s) -> FieldRef { return &s.settings.MinWarning1; }, 0, kLongestPhase},
    {"Skip", "", [](S s) -> FieldRef { return &s.settings.Skip; }},
    {"Arrow", "", [](S s) -> FieldRef { return &s.settings.Arrow; }},
    {"optBreak", "True", [](S s) -> FieldRef { return &s.settings.optBreak; }},
    {"BreakAfterRound", "6", [](S s) -> FieldRef { return &s.settings.BreakAfterRound; }, 0,
     kRounds},
    {"MoveAfterBreak", "True", [](S s) -> FieldRef { return &s.settings.MoveAfterBreak; }},
    {"TimeForBreak", "15", [](S s) -> FieldRef { return &s.settings.TimeForBreak; }, 0,
     kLongestPhase},
    {"ExtraMonitor", "0", [](S s) -> FieldRef { return &s.settings.ExtraMonitor; }},
    {"Calculate", "0", [](S s) -> FieldRef { return &s.settings.Calculate; }, 0, 1},
    {"Header", "", [](S s) -> FieldRef { return &s.settings.Header; }},
    {"RequiredFinish", "22:30", [](S s) -> FieldRef { return &s.settings.RequiredFinish; }},
    {"SoundWarning", "", File<Cue::LastWarning>},
    {"SoundWarning1", "", File<Cue::EarlyWarning>},
    {"SoundEndOfRound", "", File<Cue::EndOfRound>},
    {"SoundBreak", kDefaultSounds[3], File<Cue::Break>},
    {"SoundSkip", kDefaultSounds[4], File<Cue::Skip>},
    {"SoundArrow", kDefaultSounds[5], File<Cue::Arrow>},
    {"SoundEndOfBreak", kDefaultSounds[6], File<Cue::EndOfBreak>},
    {"SoundPlay0", "99", Play<0>},
    // Meant so: the keys of flags 1 and 2 are crossed in every store there is.
    {"SoundPlay1", "99", Play<2>},
    {"SoundPlay2", "99", Play<1>},
    {"SoundPlayBreak", "-1", Play<3>},
    {"SoundPlaySkip", "-1", Play<4>},
    {"SoundPlayArrow", "-1", Play<5>},
    {"SoundPlayEndOfBreak", "-1", Play<6>},
    {"SoundPlay0FR", "0", [](S s) -> FieldRef { return &s.settings.sounds.playFinalRound[0]; }},
    {"SoundPlay1FR", "0", [](S s) -> FieldRef { return &s.settings.sounds.playFinalRound[1]; }},
});

constexpr std::array kOptionKeys = std::to_array<SettingKey<Options>>({
    {"AutoShutdown", "0", [](O o) -> FieldRef { return &o.AutoShutdown; }},
    {"AutoLaunch", "False", [](O o) -> FieldRef { return &o.AutoLaunch; }},
    {"AutoUpdate", "True", [](O o) -> FieldRef { return &o.AutoUpdate; }},
    {"OnTop", "False", [](O o) -> FieldRef { return &o.OnTop; }},
    {"ShowTitle", "True", [](O o) -> FieldRef { return &o.ShowTitle; }},
    {"ShowMessage", "0", [](O o) -> FieldRef { return &o.ShowMessage; }, 0, 2e9},
    {"BWSfolder", "", [](O o) -> FieldRef { return &o.BWSfolder; }},
    {"TableTopUnit", "Bridgemate", [](O o) -> FieldRef { return &o.TableTopUnit; }},
    {"BMSuggest", "True", [](O o) -> FieldRef { return &o.BMSuggest; }},
    {"BMUpdateSettings", "True", [](O o) -> FieldRef { return &o.BMUpdateSettings; }},
    {"BMMinPerBoard", "7", [](O o) -> FieldRef { return &o.BMMinPerBoard; }, 0, kLongestPhase},
    {"BMBreak", "12", [](O o) -> FieldRef { return &o.BMBreak; }},
    {"BMOmitwarning1", "True", [](O o) -> FieldRef { return &o.BMOmitwarning1; }},
    {"BMOmitwarning2", "True", [](O o) -> FieldRef { return &o.BMOmitwarning2; }},
    {"BMSlowTables", "True", [](O o) -> FieldRef { return &o.BMSlowTables; }},
    {"BMAutoMove", "True", [](O o) -> FieldRef { return &o.BMAutoMove; }},
    {"BMAutoPause", "True", [](O o) -> FieldRef { return &o.BMAutoPause; }},
    {"BMPauseTables", "2", [](O o) -> FieldRef { return &o.BMPauseTables; }},
    {"BMPauseMinutes", "0.2", [](O o) -> FieldRef { return &o.BMPauseMinutes; }, 0, kLongestPhase},
    {"BMPauseSound", kDefaultPauseSound, [](O o) -> FieldRef { return &o.BMPauseSound; }},
    {"BMPausePlay", "True", [](O o) -> FieldRef { return &o.BMPausePlay; }},
    {"DisplayState", "0", [](O o) -> FieldRef { return &o.DisplayState; }},
    {"FormX", "0", [](O o) -> FieldRef { return &o.FormX; }, -kTwips, kTwips},
    {"FormY", "0", [](O o) -> FieldRef { return &o.FormY; }, -kTwips, kTwips},
    {"FormSizeX", "", [](O o) -> FieldRef { return &o.FormSizeX; }, -kTwips, kTwips},
    {"FormSizeY", "", [](O o) -> FieldRef { return &o.FormSizeY; }, -kTwips, kTwips},
    {"Show0", "1", Show<0>},
    {"Show1", "1", Show<1>},
    {"Show2", "1", Show<2>},
    {"Show3", "1", Show<3>},
    {"Show8", "1", Show<kShowTitle>},
    {"BMShowInfo", "1", [](O o) -> FieldRef { return &o.BMShowInfo; }},
    {"BMShowProgress", "1", [](O o) -> FieldRef { return &o.BMShowProgress; }},
    {"BMShowTables", "1", [](O o) -> FieldRef { return &o.BMShowTables; }},
    {"BMControl", "0", [](O o) -> FieldRef { return &o.BMControl; }},
    {"LogFile", "-1", [](O o) -> FieldRef { return &o.LogFile; }},
    {"TimeAs24hour", "True", [](O o) -> FieldRef { return &o.TimeAs24hour; }},
    {"TimeChange", "1", [](O o) -> FieldRef { return &o.TimeChange; }},
});

constexpr double kColours = 0xFFFFFF;

// Without a fallback: an element keeps what it ships with.
constexpr std::array kElementKeys = std::to_array<SettingKey<ElementStyle>>({
    {"Name", "Arial", [](E e) -> FieldRef { return &e.Name; }},
    {"Size", "", [](E e) -> FieldRef { return &e.Size; }, 1, 2000},
    {"Bold", "", [](E e) -> FieldRef { return &e.Bold; }},
    {"Italic", "", [](E e) -> FieldRef { return &e.Italic; }},
    {"Strikethrough", "", [](E e) -> FieldRef { return &e.Strikethrough; }},
    {"Underline", "", [](E e) -> FieldRef { return &e.Underline; }},
    {"Forecolour", "", [](E e) -> FieldRef { return &e.Forecolour; }, 0, kColours},
    {"Backcolour", "", [](E e) -> FieldRef { return &e.Backcolour; }, 0, kColours},
});

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

void ReadField(FieldRef field, std::string_view text, double least, double greatest) {
  struct Reader {
    std::string_view text;
    double least;
    double greatest;
    void operator()(std::string* value) const { *value = text; }
    void operator()(int16_t* value) const {
      // Whole numbers are rounded, an exact half to the even one.
      *value = static_cast<int16_t>(std::nearbyint(NumberIn(text, least, greatest)));
    }
    void operator()(int32_t* value) const {
      *value = static_cast<int32_t>(std::nearbyint(NumberIn(text, least, greatest)));
    }
    void operator()(float* value) const {
      *value = static_cast<float>(NumberIn(text, least, greatest));
    }
    void operator()(bool* value) const { *value = NumberIn(text) != 0; }
  };
  std::visit(Reader{text, least, greatest}, field);
}

std::string FieldText(FieldRef field) {
  struct Writer {
    std::string operator()(const std::string* value) const { return *value; }
    std::string operator()(const int16_t* value) const { return std::to_string(*value); }
    std::string operator()(const int32_t* value) const { return std::to_string(*value); }
    std::string operator()(const float* value) const { return SingleText(*value); }
    std::string operator()(const bool* value) const { return *value ? "True" : "False"; }
  };
  return std::visit(Writer{}, field);
}

}  // namespace corvanel
