#pragma once

#include <string>

#include "system/sound_results.h"

namespace corvanel {

/// A sound file as the system plays it.
class WaveFile {
 public:
  explicit WaveFile(const std::string& path);

  /// `Heard` when it can be played.
  SoundResult Fitness() const { return fitness_; }
  /// Its length.
  long Milliseconds() const { return milliseconds_; }
  /// Begins to play it, and does not wait for its end. False when the system does not.
  bool Begin() const;

 private:
  std::wstring path_;
  SoundResult fitness_ = SoundResult::NoFile;
  long milliseconds_ = 0;
};

}  // namespace corvanel
