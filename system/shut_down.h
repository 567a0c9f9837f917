#pragma once

namespace corvanel {

/// Switches the computer off, by the system's own command and without waiting for it.
void ShutDownComputer();

}  // namespace corvanel
