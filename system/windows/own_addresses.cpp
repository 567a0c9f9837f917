#include "system/own_addresses.h"

#include <winsock2.h>
#include <ws2tcpip.h>
// After the two above.
#include <iphlpapi.h>

#include <algorithm>
#include <array>

namespace corvanel {

std::vector<std::string> OwnAddresses() {
  constexpr ULONG kFlags =
      GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
  ULONG size = 0;
  GetAdaptersAddresses(AF_INET, kFlags, nullptr, nullptr, &size);
  // So much that it holds for another adapter that comes meanwhile.
  std::vector<IP_ADAPTER_ADDRESSES> room(size / sizeof(IP_ADAPTER_ADDRESSES) + 4);
  size = static_cast<ULONG>(room.size() * sizeof(IP_ADAPTER_ADDRESSES));
  if (GetAdaptersAddresses(AF_INET, kFlags, nullptr, room.data(), &size) != NO_ERROR) return {};
  std::vector<std::pair<bool, std::string>> found;  // not of a cable, address
  for (const auto* adapter = room.data(); adapter != nullptr; adapter = adapter->Next) {
    if (adapter->OperStatus != IfOperStatusUp || adapter->IfType == IF_TYPE_SOFTWARE_LOOPBACK) {
      continue;
    }
    for (const auto* own = adapter->FirstUnicastAddress; own != nullptr; own = own->Next) {
      std::array<char, INET_ADDRSTRLEN> text{};
      const auto* address = reinterpret_cast<const sockaddr_in*>(own->Address.lpSockaddr);
      inet_ntop(AF_INET, &address->sin_addr, text.data(), text.size());
      found.emplace_back(adapter->IfType != IF_TYPE_ETHERNET_CSMACD, text.data());
    }
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> addresses;
  addresses.reserve(found.size());
  for (auto& [wireless, address] : found) addresses.push_back(std::move(address));
  return addresses;
}

}  // namespace corvanel
