#include "system/log_file.h"

namespace corvanel {

void LogFile::OpenLog(const std::string& name) {
  file_.close();
  for (const std::filesystem::path& folder : folders_) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    file_.clear();
    file_.open(folder / name, std::ios::app);
    if (file_) return;
  }
}

void LogFile::WriteLine(const std::string& line) {
  // Each line at once: after a power cut the log still says what happened.
  if (file_.is_open()) file_ << line << std::endl;
}

}  // namespace corvanel
