#include "system/program_arguments.h"

#include "system/path_text.h"
#include "system/windows/system_call.h"
// After it.
#include <shellapi.h>

namespace corvanel {

/// Those of `main` have lost the letters that an old code page does not know.
std::vector<std::string> ProgramArguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(PathText(wide[i]));
  LocalFree(wide);
  return arguments;
}

}  // namespace corvanel
