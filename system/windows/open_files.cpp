#include "system/open_files.h"

#include <cstdint>

namespace corvanel {

/// Windows has no such limit.
size_t RaiseOpenFiles() {
  return SIZE_MAX;
}

}  // namespace corvanel
