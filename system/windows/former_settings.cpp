#include "system/former_settings.h"

#include <string>

#include "system/windows/system_call.h"

namespace corvanel {
namespace {

/// Where the runtime of the former program kept the settings of its programs.
constexpr const wchar_t* kApplication = L"Software\\VB and VBA Program Settings\\Olvendra";
constexpr DWORD kLongestName = 256;  // characters, as the registry has it for keys

std::string Utf8(std::wstring_view text) {
  const int from = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), from, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), from, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

/// A key of the registry, open for reading; closed when it goes.
class Key {
 public:
  Key(HKEY parent, const std::wstring& name) {
    if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  ~Key() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

/// The texts of a section into the store; whether there were any.
bool TakeOver(HKEY application, const std::wstring& section, SettingsStore& store) {
  const Key key(application, section);
  DWORD values = 0;
  DWORD longestName = 0;
  DWORD longest = 0;  // bytes
  if (key.Get() == nullptr ||
      RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values,
                       &longestName, &longest, nullptr, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  bool any = false;
  for (DWORD i = 0; i < values; ++i) {
    std::wstring name(longestName + 1, L'\0');
    std::wstring value(longest / sizeof(wchar_t) + 1, L'\0');
    auto nameSize = static_cast<DWORD>(name.size());
    auto size = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    DWORD type = 0;
    if (RegEnumValueW(key.Get(), i, name.data(), &nameSize, nullptr, &type,
                      reinterpret_cast<BYTE*>(value.data()), &size) != ERROR_SUCCESS ||
        type != REG_SZ) {
      continue;
    }
    name.resize(nameSize);
    value.resize(value.find(L'\0'));
    store.SaveSetting(Utf8(section), Utf8(name), Utf8(value));
    any = true;
  }
  return any;
}

}  // namespace

bool TakeOverFormerSettings(SettingsStore& store) {
  const Key application(HKEY_CURRENT_USER, kApplication);
  if (application.Get() == nullptr) return false;
  bool any = false;
  for (DWORD i = 0;; ++i) {
    std::wstring section(kLongestName, L'\0');
    DWORD size = kLongestName;
    if (RegEnumKeyExW(application.Get(), i, section.data(), &size, nullptr, nullptr, nullptr,
                      nullptr) != ERROR_SUCCESS) {
      return any;
    }
    section.resize(size);
    any |= TakeOver(application.Get(), section, store);
  }
}

}  // namespace corvanel
