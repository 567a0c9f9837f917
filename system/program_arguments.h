#pragma once

#include <string>
#include <vector>

namespace corvanel {

/// What the program was started with, its own name first, in UTF-8; of `main`'s own.
std::vector<std::string> ProgramArguments(int argc, char** argv);

}  // namespace corvanel
