#include "console/served_session.h"

#include <fmt/format.h>

#include <charconv>

#include "console/arguments.h"
#include "system/folders.h"
#include "system/open_files.h"
#include "system/own_addresses.h"

namespace corvanel {
namespace {

constexpr const char* kEverywhere = "0.0.0.0";

std::unique_ptr<WebServer> Listen(const std::string& place, std::function<double()> uptime) {
  const size_t colon = place.rfind(':');
  const std::string address = colon == std::string::npos ? kEverywhere : place.substr(0, colon);
  const std::string number = place.substr(colon == std::string::npos ? 0 : colon + 1);
  uint16_t port = 0;
  const auto [end, failure] = std::from_chars(number.data(), number.data() + number.size(), port);
  if (failure != std::errc() || end != number.data() + number.size()) {
    throw UsageError(fmt::format("--serve: \"{}\" is no [ADDRESS:]PORT", place));
  }
  const auto sound = [folder = ProgramFolderPath()](const std::string& file) {
    return SoundBytes(file, folder);
  };
  auto server = WebServer::Listen(address, port, {std::move(uptime), sound},
                                  WebServer::Limits::Within(RaiseOpenFiles()));
  if (!server) {
    throw UsageError(
        fmt::format("--serve: {} cannot be used: {}", place, server.Failure().description));
  }
  std::vector<std::string> addresses = {address};
  if (address == kEverywhere) addresses = OwnAddresses();
  if (addresses.empty()) addresses = {"127.0.0.1"};
  for (const std::string& own : addresses) {
    fmt::print("serving\thttp://{}:{}/\n", own, server.Value()->Port());
  }
  return std::move(server.Value());
}

}  // namespace

ServedSession::ServedSession(const std::string& place, const Session& session,
                             const RoundClock& clock, const TimeSource& time,
                             std::function<double()> uptime)
    : server_(Listen(place, std::move(uptime))),
      teller_({session, clock, time, [this](const RoomState& state) { server_->Show(state); }}) {}

}  // namespace corvanel
