#include "system/durable_file.h"

#include <fmt/format.h>

#include "system/path_text.h"

namespace corvanel {

RuntimeError WriteError(const std::filesystem::path& file, const std::error_code& error) {
  const int number = error == std::errc::no_space_on_device ? 61 : 75;
  return {number, fmt::format("{}: {}", PathText(file), error.message())};
}

}  // namespace corvanel
