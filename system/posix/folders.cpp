#include "system/folders.h"

#include <cstdlib>

namespace corvanel {

namespace fs = std::filesystem;

std::string ProgramFolderPath() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  return error ? fs::current_path(error).string() : program.parent_path().string();
}

fs::path DefaultStoreFile() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  const char* home = std::getenv("HOME");
  fs::path folder;
  if (config != nullptr && *config == '/') {
    folder = config;
  } else {
    folder = fs::path(home == nullptr ? "." : home) / ".config";
  }
  return folder / "corvanel" / "settings.json";
}

std::vector<fs::path> OutputFolders() {
  const char* state = std::getenv("XDG_STATE_HOME");
  const char* home = std::getenv("HOME");
  const fs::path users = state != nullptr && *state == '/'
                             ? fs::path(state)
                             : fs::path(home == nullptr ? "." : home) / ".local" / "state";
  const std::string programs = ProgramFolderPath();
  // What a package has installed is the system's, even for the one who may write there.
  if (programs.starts_with("/usr/")) return {users / "corvanel"};
  return {fs::path(programs), users / "corvanel"};
}

}  // namespace corvanel
