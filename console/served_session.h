#pragma once

#include <memory>
#include <string>

#include "network/room_teller.h"
#include "network/web_server.h"

namespace corvanel {

/// Shows a session that runs in real time in browsers.
class ServedSession : public SessionListener {
 public:
  /// `place`: "[ADDRESS:]PORT". `uptime`: the clock's, in seconds, asked in another thread.
  /// Prints where the pages are. Throws UsageError when they cannot be there.
  ServedSession(const std::string& place, const Session& session, const RoundClock& clock,
                const TimeSource& time, std::function<double()> uptime);

  void ShowFace(const ClockFace& face) override { teller_.ShowFace(face); }
  void Happened(EventKind kind, const std::string& text) override { teller_.Happened(kind, text); }
  void ShowTables(const ProgressFace& tables) override { teller_.ShowTables(tables); }

 private:
  std::unique_ptr<WebServer> server_;
  RoomTeller teller_;
};

}  // namespace corvanel
