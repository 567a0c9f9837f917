#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "system/sound_results.h"

struct sf_private_tag;

namespace corvanel {

/// A sound that is read while it is played. What kind it is of is seen from its contents, not its
/// name.
class Sound {
 public:
  /// Opens the file and reads its beginning.
  explicit Sound(const std::string& path);

  /// Heard: it can be played. Otherwise nothing else may be asked.
  SoundResult Fitness() const { return fitness_; }
  unsigned Rate() const { return rate_; }          // frames a second
  unsigned Channels() const { return channels_; }  // 1 to 32
  long long Milliseconds() const { return frames_ * 1000 / rate_; }
  /// The next frames, each a sample of every channel from -1 to 1; returns how many, and fewer than
  /// were asked for only at the end, or where the file cannot be read any further.
  size_t Read(float* samples, size_t frames);

 private:
  struct Close {
    void operator()(sf_private_tag* file) const;
  };
  SoundResult Open(const std::string& path);

  std::unique_ptr<sf_private_tag, Close> file_;
  unsigned rate_ = 0;
  unsigned channels_ = 0;
  long long frames_ = 0;
  SoundResult fitness_;
};

}  // namespace corvanel
