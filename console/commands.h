#pragma once

#include "console/arguments.h"

namespace corvanel {

/// Carries out a command and prints on standard output. Throws UsageError.
void RunCommand(const ConsoleArguments& arguments);

}  // namespace corvanel
