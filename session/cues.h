#pragma once

#include <array>
#include <string_view>

namespace corvanel {

/// The moments of a session that have a recorded sound.
enum class Cue { LastWarning, EarlyWarning, EndOfRound, Break, Skip, Arrow, EndOfBreak };

/// The first two cues are warnings; each has a switch of its own for the final round.
constexpr int kWarnings = 2;

/// The sound that each cue ships with: a file name to be joined to the program folder. The
/// backslash belongs to the name as it is stored, on every platform.
constexpr auto kDefaultSounds = std::to_array<std::string_view>(
    {"\\Fx2 DontStart.wav", "\\Fx2 LastBoard.wav", "\\Fx2 Move.wav", "\\Fx2 Break.wav",
     "\\Fx2 Skip.wav", "\\Fx2 Arrow.wav", "\\Bell.wav"});

constexpr int kCues = kDefaultSounds.size();

/// The same value for each cue.
template <class T>
constexpr std::array<T, kCues> ForEachCue(T value) {
  std::array<T, kCues> values{};
  values.fill(value);
  return values;
}

/// The sound of a pause that the scoring link makes.
constexpr std::string_view kDefaultPauseSound = "\\ShipBell.wav";

}  // namespace corvanel
