#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanel {

/// A frame of a WebSocket as a page sends it, or as none should: `length` is what it says of
/// itself.
struct Frame {
  unsigned head = 0x81;  // the last one, of text
  std::string payload;
  std::optional<uint64_t> length = {};
  bool masked = true;

  std::string Bytes() const;
};

/// One end of a connection to a server on this computer. It sends whatever it is told to and waits
/// for nothing longer than it is told to.
class WebCaller {
 public:
  /// Calls from `host`, one of this computer's own addresses: 127.0.0.1 and those after it.
  explicit WebCaller(uint16_t port, uint32_t host = 0x7F000001);
  ~WebCaller() { Drop(); }
  WebCaller(const WebCaller&) = delete;
  WebCaller& operator=(const WebCaller&) = delete;

  /// False when the server takes no more.
  bool Send(std::string_view bytes);
  /// Waits for bytes to come; false when none did, or the server has ended the connection.
  bool Receive(double seconds);
  const std::string& Received() const { return received_; }
  bool Ended() const { return ended_; }
  /// Has nothing more to say, and waits for the server to end the connection as well.
  bool SeeOut(double seconds);
  /// Goes away without a word to the server.
  void Drop();

  /// Becomes a page; false when it is turned away.
  bool Upgrade();
  bool Say(std::string_view text) { return Send(Frame{0x81, std::string(text)}.Bytes()); }
  /// The next text that the server sends to a page.
  std::optional<std::string> Hear(double seconds);

 private:
  bool TakeText(std::string& text);

  int socket_ = -1;
  bool ended_ = false;
  std::string received_;
};

/// The request by which a connection becomes that of a page.
extern const std::string kUpgrade;

}  // namespace corvanel
