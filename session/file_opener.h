#pragma once

#include <string>

namespace corvanel {

/// Opens files for the user in whatever program shows them.
class FileOpener {
 public:
  virtual ~FileOpener() = default;
  /// Returns at once. A missing file opens nothing.
  virtual void Open(const std::string& file) = 0;
};

}  // namespace corvanel
