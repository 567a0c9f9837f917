#pragma once

namespace corvanel {

/// How a sound fares, or would: what the program that plays it answers and ends with.
enum class SoundResult {
  Heard = 0,
  NoFile = 2,
  NoSound,   // not a sound, or of a kind that nothing here can play
  NoOutput,  // nothing to be heard from
  Muted,
  NoVolume,  // the volume is at 0
  NoAnswer   // the sound system does not answer
};

}  // namespace corvanel
