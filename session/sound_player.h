#pragma once

#include <string>

namespace corvanel {

/// Whether a sound file can be played, as far as is known by now.
enum class SoundFitness { Fine, NotFound, Unplayable };

/// Plays sound files. A stored file that is not where it was is looked for by its name in the
/// program folder.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  /// Starts a cue of the session and returns at once; what is still playing is cut off. A missing
  /// or broken file, or a machine without a sound device, plays nothing and holds nothing up.
  virtual void Play(const std::string& file) = 0;
  /// Lets the director hear a sound; one that he tested before is cut off, a cue of the session
  /// never.
  virtual void Test(const std::string& file) = 0;
  /// Ends what is tested; a cue of the session goes on.
  virtual void StopTest() = 0;
  /// What is known of a file; it is looked at anew meanwhile.
  virtual SoundFitness Fitness(const std::string& file) const = 0;
};

/// The name of a stored sound without its folder, and a word when it cannot be played.
std::string NamedFile(const SoundPlayer& sounds, const std::string& file);

/// How a sound that is tested fares.
struct SoundTest {
  std::string file;
  std::string on = {};   // what it is played on, and how loud
  std::string why = {};  // it cannot be heard; empty when it can
  bool ended = false;
  bool gaveWay = false;  // a cue of the session goes first
};

/// The same in a sentence.
std::string TestText(const SoundTest& test);

}  // namespace corvanel
