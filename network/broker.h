#pragma once

#include <functional>
#include <memory>
#include <string>

#include "basics/result.h"
#include "network/room_state.h"
#include "network/rooms.h"

namespace corvanel {

/// Where a broker is and as whom it is spoken to.
struct BrokerPlace {
  std::string host;
  int port = 0;
  bool tls = false;  // with certificates that this computer trusts
  std::string user;  // empty: nobody in particular
  std::string password;

  /// Of "[mqtt://|mqtts://][USER@]HOST[:PORT]"; 1883, with TLS 8883, where no port is named. An
  /// error when it is none.
  static Result<BrokerPlace> Of(const std::string& text);
};

/// A room's connection to an MQTT broker: tells all how the session stands here, and hears of the
/// other rooms. In a thread of its own that nobody waits for, not even at the end; it comes back
/// when the broker was away.
class Broker {
 public:
  struct Parts {
    BrokerPlace place;
    std::string room;  // our name
    std::function<double()> uptime;
    /// Another room, or we ourselves, said something. In the broker's thread.
    std::function<void(const BrokerWord& word)> heard;
    /// Whether there is contact now, or the reason why not. In the broker's thread.
    std::function<void(const Status& contact)> contact;
  };
  explicit Broker(Parts parts);
  ~Broker();
  Broker(const Broker&) = delete;
  Broker& operator=(const Broker&) = delete;

  /// Tells how the session stands, at once where there is contact, else when there is.
  void Show(const RoomState& state);

 private:
  class Line;
  std::shared_ptr<Line> line_;
};

}  // namespace corvanel
