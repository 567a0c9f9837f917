#include "system/program_arguments.h"

namespace corvanel {

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return {argv, argv + argc};
}

}  // namespace corvanel
