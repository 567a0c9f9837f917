// The reader of scoring databases as clang's libFuzzer drives it; tools/fuzz builds and runs it.

#include <cstddef>
#include <cstdint>
#include <string>

#include "scoring/read_picture.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  static_cast<void>(corvanel::ReadScoringPicture(bytes));
  return 0;
}
