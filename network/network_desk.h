#pragma once

#include <memory>
#include <string>

#include "network/remote_desk.h"
#include "network/room_teller.h"
#include "network/web_server.h"
#include "session/notices.h"

namespace corvanel {

/// Where a page of a server is: "http://192.168.1.20:8080/".
std::string PageAddress(const std::string& host, int port);

/// Serves other screens and devices as far as the options want it.
class NetworkDesk {
 public:
  struct Parts {
    const Options& options;
    Notices& notices;
    RoomTeller& teller;
    RemoteDesk& remotes;
    WebServer::Parts server;
    WebServer::Limits limits = {};
  };
  explicit NetworkDesk(const Parts& parts) : parts_(parts) {}
  ~NetworkDesk() { Close(); }  // NOLINT(bugprone-exception-escape): nobody is told anything
  NetworkDesk(const NetworkDesk&) = delete;
  NetworkDesk& operator=(const NetworkDesk&) = delete;

  /// Opens the server, closes it or moves it to another port, as the options say now. A line for
  /// the director tells why it cannot be opened; then nothing is served.
  void Apply();
  bool Serves() const { return server_ != nullptr; }
  /// How many pages show the session.
  size_t Screens() const { return server_ ? server_->ViewerCount() : 0; }
  RemoteDesk& Remotes() { return parts_.remotes; }

 private:
  void Close();

  Parts parts_;
  int port_ = 0;  // served at; 0: at none
  std::unique_ptr<WebServer> server_;
};

}  // namespace corvanel
