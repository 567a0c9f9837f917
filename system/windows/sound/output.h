#pragma once

#include <string>

#include "system/sound_results.h"

namespace corvanel {

/// What a sound would be played on.
struct Output {
  SoundResult result = SoundResult::Heard;  // whether it would be heard
  int volume = 0;                           // per cent
  std::string name;

  bool operator==(const Output&) const = default;
};

/// The default output as it is now.
Output PresentOutput();

}  // namespace corvanel
