#pragma once

#include <array>
#include <string_view>

namespace corvanel {

/// The seven moments of a session that have a recorded sound.
enum class Cue { LastWarning, EarlyWarning, EndOfRound, Break, Skip, Arrow, EndOfBreak };

constexpr int kCues = 7;
/// The first two cues are warnings; each has a switch of its own for the final round.
constexpr int kWarnings = 2;

/// The sound that each cue ships with: a file name to be joined to the program folder. The
/// backslash belongs to the name as it is stored, on every platform.
constexpr std::array<std::string_view, kCues> kDefaultSounds = {
    "\\Fx2 DontStart.wav", "\\Fx2 LastBoard.wav", "\\Fx2 Move.wav", "\\Fx2 Break.wav",
    "\\Fx2 Skip.wav",      "\\Fx2 Arrow.wav",     "\\Bell.wav"};

/// The sound of a pause that the scoring link makes.
constexpr std::string_view kDefaultPauseSound = "\\ShipBell.wav";

}  // namespace corvanel
