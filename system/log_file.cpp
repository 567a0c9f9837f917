#include "system/log_file.h"

namespace corvanel {

void LogFile::OpenLog(const std::string& name) {
  file_ = std::make_shared<std::ofstream>();
  writer_.Do("", [folders = folders_, name, file = file_] {
    for (const std::filesystem::path& folder : folders) {
      std::error_code error;
      std::filesystem::create_directories(folder, error);
      file->clear();
      file->open(folder / name, std::ios::app);
      if (*file) return;
    }
  });
}

void LogFile::WriteLine(const std::string& line) {
  // Each line at once: after a power cut the log still says what happened.
  if (file_) writer_.Do("", [file = file_, line] { *file << line << std::endl; });
}

}  // namespace corvanel
