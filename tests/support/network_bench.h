#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "network/network_desk.h"
#include "tests/support/fakes.h"

namespace corvanel {

inline const WebServer::Parts kNoParts = {
    [] { return 0.0; }, [](const std::string&) { return std::nullopt; }, [](const RemoteWord&) {}};

/// Keeps the list of devices in memory.
class FakeDeviceKeeper : public DeviceKeeper {
 public:
  bool Take() override { return ours; }
  void Keep(const std::string& text) override { kept = text; }
  std::string Kept() const override { return kept; }
  std::string Failure() const override { return failure; }
  void PutAside() override { putAside = true; }

  std::string kept;
  bool putAside = false;
  std::string failure;
  bool ours = true;
};

/// What serves other screens and devices, of a clock in virtual time.
struct NetworkBench {
  NetworkBench(ClockBench& bench, Notices& notices)
      : teller({bench.session, bench.clock, bench.time}),
        remotes({bench.clock, notices, keeper}),
        desk({bench.session.options, notices, teller, remotes, kNoParts,
              [this](std::function<void()> what) {
                const std::lock_guard lock(mutex);
                later.push_back(std::move(what));
              }}) {
    bench.broadcast.Add(teller);
    bench.broadcast.Add(remotes);
  }

  /// Does what was to be done later; false when there was nothing.
  bool DoLater() {
    std::vector<std::function<void()>> now;
    {
      const std::lock_guard lock(mutex);
      now.swap(later);
    }
    for (const auto& what : now) what();
    return !now.empty();
  }

  std::mutex mutex;
  std::vector<std::function<void()>> later;
  FakeDeviceKeeper keeper;
  RoomTeller teller;
  RemoteDesk remotes;
  NetworkDesk desk;
};

}  // namespace corvanel
