#pragma once

#include <cstddef>

namespace corvanel {

/// How many files and connections this program can have open at once, after it has asked the system
/// for as many as it may.
size_t RaiseOpenFiles();

}  // namespace corvanel
