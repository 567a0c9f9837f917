#pragma once

#include <string>
#include <vector>

namespace corvanel {

/// The addresses under which other computers can reach this one, "192.168.1.20", as far as its
/// network is up; those of a cable first.
std::vector<std::string> OwnAddresses();

}  // namespace corvanel
