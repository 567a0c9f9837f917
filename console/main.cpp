#include <fmt/format.h>

#include <cstdio>
#include <exception>
#include <string>

#include "console/arguments.h"
#include "console/commands.h"
#include "system/durable_file.h"
#include "system/program_arguments.h"

int main(int argc, char** argv) {
  using namespace corvanel;
  KeepFilesPrivate();
  try {
    if (const auto arguments = ReadArguments(ProgramArguments(argc, argv))) RunCommand(*arguments);
    return std::fflush(stdout) == 0 ? 0 : 2;
  } catch (const std::exception& error) {
    std::string line = error.what();
    for (char& c : line) c = c == '\r' || c == '\n' ? ' ' : c;
    fmt::print(stderr, "corvanel-console: {}\n", line);
    return 2;
  }
}
