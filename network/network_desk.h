#pragma once

#include <memory>
#include <optional>
#include <string>

#include "network/room_teller.h"
#include "network/web_server.h"
#include "session/notices.h"

namespace corvanel {

/// Where a page of a server is: "http://192.168.1.20:8080/".
std::string PageAddress(const std::string& host, int port);

/// Serves other screens as far as the options want it.
class NetworkDesk : public SessionListener {
 public:
  struct Parts {
    const Session& session;
    const RoundClock& clock;
    const TimeSource& time;
    Notices& notices;
    WebServer::Parts server;
    WebServer::Limits limits = {};
  };
  explicit NetworkDesk(const Parts& parts) : parts_(parts) {}

  /// Opens the server, closes it or moves it to another port, as the options say now. A line for
  /// the director tells why it cannot be opened; then nothing is served.
  void Apply();
  bool Serves() const { return server_ != nullptr; }
  /// How many pages show the session.
  size_t Screens() const { return server_ ? server_->ViewerCount() : 0; }

  void ShowFace(const ClockFace& face) override;
  void ShowTables(const ProgressFace& tables) override;
  void ShowTimeOfDay(const std::string& time) override;
  void Happened(EventKind kind, const std::string& text) override;

 private:
  void Close();

  Parts parts_;
  int port_ = 0;  // served at; 0: at none
  std::unique_ptr<WebServer> server_;
  std::optional<RoomTeller> teller_;
  ProgressFace tables_;
};

}  // namespace corvanel
