#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "network/network_desk.h"
#include "system/device_file.h"

namespace corvanel {

/// Shows a session that runs in real time in browsers, and has it led from there.
class ServedSession {
 public:
  struct Parts {
    const Session& session;
    RoundClock& clock;
    const TimeSource& time;
    Notices& notices;
    Broadcast& broadcast;
    std::filesystem::path store;  // the settings file, beside which the devices are kept
  };
  /// `place`: "[ADDRESS:]PORT". `uptime`: the clock's, in seconds, asked in another thread.
  /// Prints where the pages are, and the code with which a device can come in to lead. Throws
  /// UsageError when they cannot be there.
  ServedSession(const std::string& place, const Parts& parts, std::function<double()> uptime);
  ServedSession(const ServedSession&) = delete;
  ServedSession& operator=(const ServedSession&) = delete;

  /// Waits for something to be done, as a device said or else; nothing when there is none until
  /// then.
  std::optional<std::function<void()>> WaitUntil(std::chrono::steady_clock::time_point moment);

 private:
  void Listen(const std::string& place);
  void Queue(std::function<void()> what);
  void Hear(const RemoteWord& word);
  void PrintCode() const;

  DiskWriter writer_;
  RoomTeller teller_;
  DeviceFile devices_;
  RemoteDesk remotes_;
  std::vector<std::string> pages_;
  std::mutex mutex_;
  std::condition_variable came_;
  std::deque<std::function<void()>> waiting_;  // to be done
  NetworkDesk desk_;
};

}  // namespace corvanel
