#pragma once

#include <functional>
#include <string>

#include "system/posix/sound/sound.h"

namespace corvanel {

/// What sounds are played on, as it stands now.
struct Output {
  SoundResult result = SoundResult::NoOutput;  // Heard: a sound would be
  int volume = 0;                              // percent
  std::string name = {};                       // for people

  bool operator==(const Output&) const = default;
};

/// Called when a sound has begun; anything but Heard is why it cannot be heard all the same.
using Begun = std::function<void(SoundResult)>;

}  // namespace corvanel
