#include "network/network_desk.h"

#include <fmt/format.h>

namespace corvanel {

std::string PageAddress(const std::string& host, int port) {
  return fmt::format("http://{}:{}/", host, port);
}

void NetworkDesk::Close() {
  parts_.teller.TellTo({});
  parts_.remotes.SpeakBy(nullptr);
  server_.reset();
  port_ = 0;
}

void NetworkDesk::Apply() {
  const int port = parts_.options.NetworkOn ? parts_.options.NetworkPort : 0;
  if (port == port_ && (port == 0 || server_)) return;
  Close();
  parts_.notices.Clear(NoticeKind::Network);
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
  parts_.remotes.SpeakBy(server_.get());
  parts_.teller.TellTo([this](const RoomState& state) { server_->Show(state); });
}

}  // namespace corvanel
