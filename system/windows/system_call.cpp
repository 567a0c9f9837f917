#include "system/windows/system_call.h"

namespace corvanel {

std::wstring SystemPath(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::path whole = std::filesystem::absolute(path, error).make_preferred();
  if (error) whole = path;
  const std::wstring& text = whole.native();
  if (text.starts_with(L"\\\\?\\") || text.starts_with(L"\\\\.\\")) return text;
  // A share is "\\server\folder".
  if (text.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + text.substr(2);
  return L"\\\\?\\" + text;
}

}  // namespace corvanel
