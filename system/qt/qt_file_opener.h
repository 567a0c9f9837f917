#pragma once

#include "session/file_opener.h"

namespace corvanel {

/// Opens files by the desktop's own choice of program.
class QtFileOpener : public FileOpener {
 public:
  void Open(const std::string& file) override;
};

}  // namespace corvanel
