#pragma once

#include <memory>
#include <string>

#include "network/broker.h"
#include "network/remote_desk.h"
#include "network/room_teller.h"
#include "network/web_server.h"
#include "session/notices.h"

namespace corvanel {

/// Where a page of a server is: "http://192.168.1.20:8080/".
std::string PageAddress(const std::string& host, int port);

/// Serves other screens and devices, and tells a broker how the session stands, as far as the
/// options want it.
class NetworkDesk {
 public:
  struct Parts {
    const Options& options;
    Notices& notices;
    RoomTeller& teller;
    RemoteDesk& remotes;
    WebServer::Parts server;
    /// Has something done in the thread of the clock, soon; from any thread.
    std::function<void(std::function<void()> what)> later;
    WebServer::Limits limits = {};
  };
  explicit NetworkDesk(const Parts& parts) : parts_(parts) {}
  ~NetworkDesk() { Close(); }  // NOLINT(bugprone-exception-escape): nobody is told anything
  NetworkDesk(const NetworkDesk&) = delete;
  NetworkDesk& operator=(const NetworkDesk&) = delete;

  /// Opens the server, closes it or moves it to another port, and joins or leaves the broker, as
  /// the options say now. A line for the director tells why one of them cannot be; the other is.
  void Apply();
  /// Serves at an address of this computer ("0.0.0.0" for all), port 0 for any, and joins the
  /// broker of the options.
  Status Serve(const std::string& address, uint16_t port);
  bool Serves() const { return server_ != nullptr; }
  /// Where it does.
  uint16_t Port() const { return server_ ? server_->Port() : 0; }
  /// How many pages show the session.
  size_t Screens() const { return server_ ? server_->ViewerCount() : 0; }
  RemoteDesk& Remotes() { return parts_.remotes; }

 private:
  /// What the options want.
  struct Wanted {
    int port = 0;  // 0: none
    std::string broker;
    std::string password;
    std::string room;

    bool operator==(const Wanted&) const = default;
  };
  Wanted WantedNow() const;
  void Close();
  void Join();
  void TellContact(const Status& contact);

  Parts parts_;
  Wanted wanted_;
  std::unique_ptr<WebServer> server_;
  std::unique_ptr<Broker> broker_;  // goes first: it tells the server
};

}  // namespace corvanel
