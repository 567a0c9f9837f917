#include "session/sound_player.h"

#include <fmt/format.h>

#include "basics/numbers.h"

namespace corvanel {

std::string NamedFile(const SoundPlayer& sounds, const std::string& file) {
  std::string name(FileName(file));
  switch (sounds.Fitness(file)) {
    case SoundFitness::NotFound:
      return name + " (not found)";
    case SoundFitness::Unplayable:
      return name + " (cannot be played)";
    default:
      return name;
  }
}

std::string TestText(const SoundTest& test) {
  const std::string_view name = FileName(test.file);
  if (!test.why.empty()) return fmt::format("{} was not heard: {}", name, test.why);
  return fmt::format("{} {} on {}", name, test.ended ? "was played" : "is playing", test.on);
}

}  // namespace corvanel
