#include "system/installer_file.h"

#include <array>
#include <optional>

#include "system/windows/handle.h"
// After it.
#include <aclapi.h>
#include <objbase.h>
#include <sddl.h>

namespace corvanel {
namespace {

constexpr size_t kPiece = 1U << 16U;  // bytes

/// The text that names the user of this process to the system; empty when it cannot be told.
std::wstring ThisUser() {
  HANDLE opened = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) return {};
  const Handle token(opened);
  alignas(TOKEN_USER) std::array<char, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
  DWORD size = 0;
  wchar_t* text = nullptr;
  if (GetTokenInformation(token.Get(), TokenUser, user.data(), user.size(), &size) == 0 ||
      ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(user.data())->User.Sid, &text) == 0) {
    return {};
  }
  const std::wstring found = text;
  LocalFree(text);
  return found;
}

/// A new folder that only this user enters, wherever the temporary folder lies; empty when it
/// cannot be made.
std::wstring MakeOwnFolder() {
  std::error_code error;
  const auto temporary = std::filesystem::temp_directory_path(error);
  GUID id{};
  std::array<wchar_t, 40> name{};
  if (error || CoCreateGuid(&id) != S_OK || StringFromGUID2(id, name.data(), name.size()) == 0) {
    return {};
  }
  const std::wstring folder =
      SystemPath(temporary / (L"corvanel-update-" + std::wstring(name.data())));
  const std::wstring rights = L"D:P(A;OICI;FA;;;" + ThisUser() + L")(A;OICI;FA;;;SY)";
  SECURITY_ATTRIBUTES security{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(
          rights.c_str(), SDDL_REVISION_1, &security.lpSecurityDescriptor, nullptr) == 0) {
    return {};
  }
  const bool made = CreateDirectoryW(folder.c_str(), &security) != 0;
  LocalFree(security.lpSecurityDescriptor);
  return made ? folder : std::wstring();
}

class WindowsInstallerFile : public InstallerFile {
 public:
  bool Create() override {
    folder_ = MakeOwnFolder();
    if (folder_.empty()) return false;
    path_ = folder_ + L"\\CorvanelSetup.exe";
    // Nobody else opens it while it is written.
    file_.emplace(CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(*file_);
  }

  bool Write(const std::string& bytes) override {
    DWORD written = 0;
    return WriteFile(file_->Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) != 0 &&
           written == bytes.size();
  }

  Result<std::string> Close() override {
    if (FlushFileBuffers(file_->Get()) == 0) return Error{0, "the disk is full"};
    // Open for others to read, which starting it needs, but not to write, rename or delete: what is
    // read now is what is started.
    file_.reset();
    file_.emplace(CreateFileW(path_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    Sha256 hash;
    std::string piece(kPiece, '\0');
    DWORD read = 0;
    do {
      if (ReadFile(file_->Get(), piece.data(), kPiece, &read, nullptr) == 0) {
        return Error{0, "the file cannot be read back"};
      }
      hash.Add(std::string_view(piece).substr(0, read));
    } while (read > 0);
    return hash.Digits();
  }

  void Remove() override {
    file_.reset();
    DeleteFileW(path_.c_str());
    RemoveDirectoryW(folder_.c_str());
  }

  Status Start() override {
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(path_.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, folder_.c_str(),
                       &start, &process) == 0) {
      return Error{0, "Error trying to download - " + LastError().message()};
    }
    const Handle started(process.hProcess);
    const Handle thread(process.hThread);
    return {};
  }

 private:
  std::wstring folder_;
  std::wstring path_;
  std::optional<Handle> file_;
};

}  // namespace

std::unique_ptr<InstallerFile> MakeInstallerFile() {
  return std::make_unique<WindowsInstallerFile>();
}

}  // namespace corvanel
