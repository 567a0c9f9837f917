#pragma once

#include <string_view>
#include <vector>

namespace corvanel {

/// A file of the pages, as network/pages has it.
struct PageFile {
  std::string_view name;
  std::string_view bytes;
};

/// All of them.
const std::vector<PageFile>& PageFiles();

}  // namespace corvanel
