#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "basics/result.h"
#include "network/remote_desk.h"
#include "network/room_state.h"
#include "network/rooms.h"

namespace corvanel {

/// Serves the pages, in a thread of its own that nobody waits for. What a stranger sends is bounded
/// in number, size and time, and leads nowhere but to the pages.
class WebServer : public RemoteLines {
 public:
  struct Limits {
    size_t viewers = 1500;
    size_t visitors = 100;  // connections that are no viewers (yet); further ones are closed
    // Of either so many from one address, so that nobody takes all places.
    size_t viewersFrom = 60;
    size_t visitorsFrom = 30;

    /// So many that a program that can have `openFiles` open keeps plenty for itself.
    static Limits Within(size_t openFiles);
  };

  /// What the server asks for, in its own thread.
  struct Parts {
    std::function<double()> uptime;  // seconds
    /// The bytes of a sound file as the settings have it; nothing where there is none.
    std::function<std::optional<std::string>(const std::string& file)> sound;
    /// A device that is let in, or just was, said something.
    std::function<void(const RemoteWord& word)> heard;
  };

  /// Listens at an address of this computer ("0.0.0.0" for all of them), port 0 for any. An error
  /// when that cannot be: the port is taken, the address is none of this computer's.
  static Result<std::unique_ptr<WebServer>> Listen(const std::string& address, uint16_t port,
                                                   const Parts& parts, const Limits& limits);
  ~WebServer() override;

  /// Shows a state on every page of the session, from any thread.
  void Show(RoomState state);
  /// Takes what another room told for the pages of rooms, from any thread.
  void HearRoom(BrokerWord word);
  void Admit(const RemoteGate& gate) override;
  void TellDevices(const std::string& state) override;
  void Answer(const RemoteWord& word, const std::string& refusal) override;
  uint16_t Port() const;
  /// How many pages show the session, as far as is known by now.
  size_t ViewerCount() const;

 private:
  class Impl;
  explicit WebServer(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvanel
