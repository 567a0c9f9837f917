#include "system/folders.h"

#include <shlobj.h>

#include "system/path_text.h"
#include "system/windows/system_call.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

/// One of the user's folders; the present one where the system does not say.
fs::path UsersFolder(const KNOWNFOLDERID& id) {
  wchar_t* path = nullptr;
  const fs::path folder = SHGetKnownFolderPath(id, 0, nullptr, &path) == S_OK ? path : L".";
  CoTaskMemFree(path);
  return folder / "Corvanel";
}

}  // namespace

std::string ProgramFolderPath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return PathText(fs::path(path).parent_path());
    }
    path.resize(path.size() * 2);
  }
}

fs::path DefaultStoreFile() {
  return UsersFolder(FOLDERID_RoamingAppData) / "settings.json";
}

std::vector<fs::path> OutputFolders() {
  return {PathOf(ProgramFolderPath()), UsersFolder(FOLDERID_LocalAppData)};
}

}  // namespace corvanel
