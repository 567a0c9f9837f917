#include "network/network_desk.h"

#include <fmt/format.h>

namespace corvanel {

std::string PageAddress(const std::string& host, int port) {
  return fmt::format("http://{}:{}/", host, port);
}

void NetworkDesk::Close() {
  teller_.reset();
  server_.reset();
  port_ = 0;
  parts_.notices.Clear(NoticeKind::Network);
}

void NetworkDesk::Apply() {
  const Options& options = parts_.session.options;
  const int port = options.NetworkOn ? options.NetworkPort : 0;
  if (port == port_ && (port == 0 || server_)) return;
  Close();
  if (port == 0) return;
  auto server =
      WebServer::Listen("0.0.0.0", static_cast<uint16_t>(port), parts_.server, parts_.limits);
  if (!server) {
    parts_.notices.Set({NoticeKind::Network,
                        fmt::format("Other screens are not served: port {} cannot be used ({})",
                                    port, server.Failure().description),
                        "Try again"});
    return;
  }
  port_ = port;
  server_ = std::move(server.Value());
  teller_.emplace(RoomTeller::Parts{parts_.session, parts_.clock, parts_.time,
                                    [this](const RoomState& state) { server_->Show(state); }});
  teller_->ShowTables(tables_);
}

void NetworkDesk::ShowFace(const ClockFace& face) {
  if (teller_) teller_->ShowFace(face);
}

void NetworkDesk::ShowTables(const ProgressFace& tables) {
  tables_ = tables;
  if (teller_) teller_->ShowTables(tables);
}

void NetworkDesk::Happened(EventKind kind, const std::string& text) {
  if (teller_) teller_->Happened(kind, text);
}

void NetworkDesk::ShowTimeOfDay(const std::string& time) {
  if (teller_) teller_->ShowTimeOfDay(time);
}

}  // namespace corvanel
