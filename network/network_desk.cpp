#include "network/network_desk.h"

#include <fmt/format.h>

#include <utility>

namespace corvanel {

std::string PageAddress(const std::string& host, int port) {
  return fmt::format("http://{}:{}/", host, port);
}

NetworkDesk::Wanted NetworkDesk::WantedNow() const {
  const Options& options = parts_.options;
  return {options.NetworkOn ? options.NetworkPort : 0, options.NetworkBroker,
          options.NetworkBrokerPassword, options.NetworkRoom};
}

void NetworkDesk::Close() {
  parts_.teller.TellTo({});
  parts_.remotes.SpeakBy(nullptr);
  broker_.reset();
  server_.reset();
}

void NetworkDesk::Apply() {
  Wanted wanted = WantedNow();
  if (wanted == wanted_ && (wanted.port == 0 || server_)) return;
  wanted_ = std::move(wanted);
  parts_.notices.Clear(NoticeKind::Network);
  if (wanted_.port != 0) {
    const Status served = Serve("0.0.0.0", static_cast<uint16_t>(wanted_.port));
    if (served) return;
    parts_.notices.Set({NoticeKind::Network,
                        fmt::format("Other screens are not served: port {} cannot be used ({})",
                                    wanted_.port, served.Failure().description),
                        "Try again"});
  } else {
    Close();
  }
  Join();
}

Status NetworkDesk::Serve(const std::string& address, uint16_t port) {
  Close();
  auto server = WebServer::Listen(address, port, parts_.server, parts_.limits);
  if (!server) return server.Failure();
  server_ = std::move(server.Value());
  parts_.remotes.SpeakBy(server_.get());
  Join();
  return {};
}

/// The broker, as far as it is wanted; and tells whoever there is now how the session stands.
void NetworkDesk::Join() {
  parts_.notices.Clear(NoticeKind::Broker);
  const Wanted wanted = WantedNow();
  if (!wanted.broker.empty()) {
    auto place = BrokerPlace::Of(wanted.broker);
    if (!place || wanted.room.empty()) {
      TellContact(place ? Error{0, "this room has no name"} : place.Failure());
    } else {
      place.Value().password = wanted.password;
      broker_ =
          std::make_unique<Broker>(Broker::Parts{place.Value(), wanted.room, parts_.server.uptime,
                                                 [server = server_.get()](const BrokerWord& word) {
                                                   if (server != nullptr) server->HearRoom(word);
                                                 },
                                                 [this](const Status& contact) {
                                                   parts_.later([this, contact] {
                                                     if (broker_) TellContact(contact);
                                                   });
                                                 }});
    }
  }
  if (!server_ && !broker_) return;
  parts_.teller.TellTo([this](const RoomState& state) {
    if (server_) server_->Show(state);
    if (broker_) broker_->Show(state);
  });
}

void NetworkDesk::TellContact(const Status& contact) {
  if (contact) return parts_.notices.Clear(NoticeKind::Broker);
  parts_.notices.Set({NoticeKind::Broker, fmt::format("Other rooms do not hear of this one: {}",
                                                      contact.Failure().description)});
}

}  // namespace corvanel
