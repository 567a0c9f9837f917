#include "tests/fuzz/web_caller.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <utility>

namespace corvanel {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kPatienceOfCaller =
    5;  // seconds until a handshake is answered, or bytes are taken

sockaddr_in Address(uint32_t host, uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(host);
  address.sin_port = htons(port);
  return address;
}

bool Ready(int socket, short what, double seconds) {
  pollfd waited{socket, what, 0};
  return poll(&waited, 1, static_cast<int>(seconds * 1000)) > 0;
}

std::string BigEndian(uint64_t number, int bytes) {
  std::string text;
  while (bytes-- > 0) text += static_cast<char>(number >> (8 * bytes));
  return text;
}

double Since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

const std::string kUpgrade =
    "GET /session HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
    "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n";

std::string Frame::Bytes() const {
  const std::string mask = "mask";
  const uint64_t told = length.value_or(payload.size());
  const int bytes = told < 126 ? 0 : told < 0x10000 ? 2 : 8;
  const unsigned size = bytes == 0 ? static_cast<unsigned>(told) : bytes == 2 ? 126 : 127;
  std::string text = BigEndian(head, 1) + BigEndian(size | (masked ? 0x80U : 0U), 1);
  text += BigEndian(told, bytes);
  if (!masked) return text + payload;
  text += mask;
  for (size_t i = 0; i < payload.size(); ++i) {
    text += static_cast<char>(payload[i] ^ mask[i % mask.size()]);
  }
  return text;
}

WebCaller::WebCaller(uint16_t port, uint32_t host) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
  const sockaddr_in from = Address(host, 0);
  const sockaddr_in to = Address(INADDR_LOOPBACK, port);
  const auto* const own = reinterpret_cast<const sockaddr*>(&from);
  const auto* const its = reinterpret_cast<const sockaddr*>(&to);
  ended_ =
      socket_ < 0 || bind(socket_, own, sizeof from) != 0 || connect(socket_, its, sizeof to) != 0;
}

bool WebCaller::Send(std::string_view bytes) {
  while (!bytes.empty() && !ended_) {
    if (!Ready(socket_, POLLOUT, kPatienceOfCaller)) return false;
    const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent < 0) return false;
    bytes.remove_prefix(static_cast<size_t>(sent));
  }
  return !ended_;
}

bool WebCaller::Receive(double seconds) {
  if (ended_ || !Ready(socket_, POLLIN, seconds)) return false;
  std::array<char, 16384> bytes{};
  const ssize_t size = recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT);
  ended_ = size <= 0;
  if (!ended_) received_.append(bytes.data(), static_cast<size_t>(size));
  return !ended_;
}

bool WebCaller::SeeOut(double seconds) {
  if (!ended_) shutdown(socket_, SHUT_WR);
  const auto start = Clock::now();
  while (!ended_ && Since(start) < seconds) Receive(seconds);
  return ended_;
}

/// With bytes of the server unread or not, it is told by a reset.
void WebCaller::Drop() {
  if (socket_ < 0) return;
  const linger atOnce{1, 0};
  setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  close(socket_);
  socket_ = -1;
  ended_ = true;
}

bool WebCaller::Upgrade() {
  Send(kUpgrade);
  const auto start = Clock::now();
  size_t end = std::string::npos;
  while (end == std::string::npos && Since(start) < kPatienceOfCaller &&
         Receive(kPatienceOfCaller)) {
    end = received_.find("\r\n\r\n");
  }
  if (end == std::string::npos || !received_.starts_with("HTTP/1.1 101")) return false;
  received_.erase(0, end + 4);
  return true;
}

/// Takes the first frame off what has come, if it is all there.
bool WebCaller::TakeText(std::string& text) {
  const auto number = [&](size_t place, size_t bytes) {
    size_t value = 0;
    for (size_t i = 0; i < bytes; ++i) {
      value = value << 8U | static_cast<unsigned char>(received_[place + i]);
    }
    return value;
  };
  if (received_.size() < 2) return false;
  const size_t size = number(1, 1);
  const size_t bytes = size == 126 ? 2 : size == 127 ? 8 : 0;
  if (received_.size() < 2 + bytes) return false;
  const size_t length = bytes == 0 ? size : number(2, bytes);
  if (received_.size() - 2 - bytes < length) return false;
  // What is no text is a ping, or a goodbye.
  text = number(0, 1) == 0x81 ? received_.substr(2 + bytes, length) : "";
  received_.erase(0, 2 + bytes + length);
  return true;
}

std::optional<std::string> WebCaller::Hear(double seconds) {
  const auto start = Clock::now();
  for (std::string text;;) {
    while (TakeText(text)) {
      if (!text.empty()) return text;
    }
    const double left = seconds - Since(start);
    if (left <= 0 || !Receive(left)) return std::nullopt;
  }
}

}  // namespace corvanel
