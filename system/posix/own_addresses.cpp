#include "system/own_addresses.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace corvanel {

std::vector<std::string> OwnAddresses() {
  ifaddrs* first = nullptr;
  if (getifaddrs(&first) != 0) return {};
  std::vector<std::pair<bool, std::string>> found;  // not of a cable, address
  for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
    const bool up = (entry->ifa_flags & IFF_RUNNING) != 0 && (entry->ifa_flags & IFF_LOOPBACK) == 0;
    if (!up || entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_INET) continue;
    std::array<char, INET_ADDRSTRLEN> text{};
    const auto* address = reinterpret_cast<const sockaddr_in*>(entry->ifa_addr);
    inet_ntop(AF_INET, &address->sin_addr, text.data(), text.size());
    found.emplace_back(!std::string_view(entry->ifa_name).starts_with('e'), text.data());
  }
  freeifaddrs(first);
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> addresses;
  addresses.reserve(found.size());
  for (auto& [wireless, address] : found) addresses.push_back(std::move(address));
  return addresses;
}

}  // namespace corvanel
