#pragma once

#include "app/console_arguments.h"

namespace corvanel {

/// Carries out a command and prints on standard output. Throws UsageError.
void RunCommand(const ConsoleArguments& arguments);

}  // namespace corvanel
