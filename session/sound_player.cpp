#include "session/sound_player.h"

#include "basics/numbers.h"

namespace corvanel {

std::string NamedFile(const SoundPlayer& sounds, const std::string& file) {
  const std::string name(FileName(file));
  return sounds.IsThere(file) ? name : name + " (not found)";
}

}  // namespace corvanel
