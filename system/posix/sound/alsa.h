#pragma once

#include "system/posix/sound/output.h"

namespace corvanel {

/// The default device of the kernel's own sound system, for computers without a sound server.
Output AlsaOutput();

/// Plays the sound and returns when it is over.
SoundResult PlayOnAlsa(Sound& sound, const Begun& begun);

}  // namespace corvanel
