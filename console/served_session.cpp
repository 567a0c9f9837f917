#include "console/served_session.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdio>

#include "console/arguments.h"
#include "network/network_desk.h"
#include "system/folders.h"
#include "system/open_files.h"
#include "system/own_addresses.h"

namespace corvanel {
namespace {

constexpr const char* kEverywhere = "0.0.0.0";

}  // namespace

ServedSession::ServedSession(const std::string& place, const Parts& parts,
                             std::function<double()> uptime)
    : teller_({parts.session, parts.clock, parts.time}),
      devices_(parts.store, writer_),
      remotes_({parts.clock, parts.notices, devices_}) {
  parts.broadcast.Add(teller_);
  parts.broadcast.Add(remotes_);
  remotes_.Load();
  Listen(place, std::move(uptime));
  remotes_.SpeakBy(server_.get());
  teller_.TellTo([this](const RoomState& state) { server_->Show(state); });
  remotes_.Invite();
  PrintCode();
}

ServedSession::~ServedSession() {
  teller_.TellTo({});
  remotes_.SpeakBy(nullptr);
}

void ServedSession::Listen(const std::string& place, std::function<double()> uptime) {
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
  auto server = WebServer::Listen(
      address, port, {std::move(uptime), sound, [this](const RemoteWord& word) { Queue(word); }},
      WebServer::Limits::Within(RaiseOpenFiles()));
  if (!server) {
    throw UsageError(
        fmt::format("--serve: {} cannot be used: {}", place, server.Failure().description));
  }
  server_ = std::move(server.Value());
  std::vector<std::string> addresses = {address};
  if (address == kEverywhere) addresses = OwnAddresses();
  if (addresses.empty()) addresses = {"127.0.0.1"};
  for (const std::string& own : addresses) {
    pages_.push_back(PageAddress(own, server_->Port()));
    fmt::print("serving\t{}\n", pages_.back());
  }
}

/// In the server's thread.
void ServedSession::Queue(const RemoteWord& word) {
  const std::lock_guard lock(mutex_);
  words_.push_back(word);
  came_.notify_one();
}

std::optional<RemoteWord> ServedSession::WaitUntil(std::chrono::steady_clock::time_point moment) {
  std::unique_lock lock(mutex_);
  if (!came_.wait_until(lock, moment, [this] { return !words_.empty(); })) return std::nullopt;
  const RemoteWord word = words_.front();
  words_.pop_front();
  return word;
}

void ServedSession::Hear(const RemoteWord& word) {
  const std::string code = remotes_.Code();
  remotes_.Hear(word);
  if (remotes_.Code() != code) PrintCode();
}

/// Whoever sees it may let a device in.
void ServedSession::PrintCode() const {
  for (const std::string& page : pages_) fmt::print("lead\t{}remote#{}\n", page, remotes_.Code());
  std::fflush(stdout);
}

}  // namespace corvanel
