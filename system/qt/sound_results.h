#pragma once

namespace corvanel {

/// The exit codes of the program that plays one sound.
enum class SoundResult { Played = 0, NoFile = 2, NoDevice = 3, NoSound = 4 };

}  // namespace corvanel
