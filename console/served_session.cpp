#include "console/served_session.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdio>

#include "console/arguments.h"
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
      remotes_({parts.clock, parts.notices, devices_}),
      desk_({.options = parts.session.options,
             .notices = parts.notices,
             .teller = teller_,
             .remotes = remotes_,
             .server = {
                 .uptime = std::move(uptime),
                 .sound = [folder = ProgramFolderPath()](
                              const std::string& file) { return SoundBytes(file, folder); },
                 .heard = [this](const RemoteWord& word) { Queue([this, word] { Hear(word); }); }},
             .later = [this](std::function<void()> what) { Queue(std::move(what)); },
             .limits = WebServer::Limits::Within(RaiseOpenFiles())}) {
  parts.broadcast.Add(teller_);
  parts.broadcast.Add(remotes_);
  remotes_.Load();
  Listen(place);
  remotes_.Invite();
  PrintCode();
}

void ServedSession::Listen(const std::string& place) {
  const size_t colon = place.rfind(':');
  const std::string address = colon == std::string::npos ? kEverywhere : place.substr(0, colon);
  const std::string number = place.substr(colon == std::string::npos ? 0 : colon + 1);
  uint16_t port = 0;
  const auto [end, failure] = std::from_chars(number.data(), number.data() + number.size(), port);
  if (failure != std::errc() || end != number.data() + number.size()) {
    throw UsageError(fmt::format("--serve: \"{}\" is no [ADDRESS:]PORT", place));
  }
  if (const Status served = desk_.Serve(address, port); !served) {
    throw UsageError(
        fmt::format("--serve: {} cannot be used: {}", place, served.Failure().description));
  }
  std::vector<std::string> addresses = {address};
  if (address == kEverywhere) addresses = OwnAddresses();
  if (addresses.empty()) addresses = {"127.0.0.1"};
  for (const std::string& own : addresses) {
    pages_.push_back(PageAddress(own, desk_.Port()));
    fmt::print("serving\t{}\n", pages_.back());
  }
}

/// In any thread.
void ServedSession::Queue(std::function<void()> what) {
  const std::lock_guard lock(mutex_);
  waiting_.push_back(std::move(what));
  came_.notify_one();
}

std::optional<std::function<void()>> ServedSession::WaitUntil(
    std::chrono::steady_clock::time_point moment) {
  std::unique_lock lock(mutex_);
  if (!came_.wait_until(lock, moment, [this] { return !waiting_.empty(); })) return std::nullopt;
  auto what = std::move(waiting_.front());
  waiting_.pop_front();
  return what;
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
