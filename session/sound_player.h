#pragma once

#include <string>

namespace corvanel {

/// Plays sound files.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  /// Starts a wave file and returns at once; what is still playing is cut off. A missing or
  /// broken file, or a machine without a sound device, plays nothing and holds nothing up.
  virtual void Play(const std::string& file) = 0;
  /// Whether there is such a file, here or by its name in the program folder.
  virtual bool IsThere(const std::string& file) const = 0;
};

/// The name of a stored sound without its folder, and a word when there is no such file.
std::string NamedFile(const SoundPlayer& sounds, const std::string& file);

}  // namespace corvanel
