#include "network/viewer.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <utility>

namespace corvanel {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace websocket = beast::websocket;

constexpr size_t kLongestMessage = 320;  // bytes, of what a page sends
constexpr size_t kFastest = 2000;        // bytes a second
constexpr int kMessagesAMinute = 120;
constexpr size_t kMostWaiting = 4;  // answers
constexpr auto kHandshake = std::chrono::seconds(10);
constexpr auto kSilence = std::chrono::seconds(40);
constexpr auto kGuess = std::chrono::seconds(1);

/// The number that a page sent with its question for the time; nothing for all else.
std::optional<double> AskedAt(std::string_view text) {
  constexpr std::string_view kQuestion = "time ";
  double asked = 0;
  if (!text.starts_with(kQuestion)) return std::nullopt;
  const char* const end = text.data() + text.size();
  const auto [rest, failure] = std::from_chars(text.data() + kQuestion.size(), end, asked);
  // What is no number to JSON could not be answered.
  const bool number = failure == std::errc() && rest == end && std::isfinite(asked);
  return number ? std::optional(asked) : std::nullopt;
}

}  // namespace

Viewer::Viewer(uint64_t number, PageKind kind, WebStream stream, asio::ip::address from,
               Viewers& viewers)
    : socket_(std::move(stream)),
      from_(std::move(from)),
      viewers_(viewers),
      slow_(socket_.get_executor()),
      number_(number),
      kind_(kind) {
  beast::get_lowest_layer(socket_).expires_never();
  beast::get_lowest_layer(socket_).rate_policy().read_limit(kFastest);
  websocket::stream_base::timeout times{kHandshake, kSilence, true};
  socket_.set_option(times);
  socket_.read_message_max(kLongestMessage);
  socket_.auto_fragment(false);
}

void Viewer::Accept(const WebRequest& request) {
  socket_.async_accept(request, [self = shared_from_this()](beast::error_code error) {
    if (error) return self->Leave();
    self->open_ = true;
    self->viewers_.Joined(*self);
    self->Read();
  });
}

void Viewer::Send(const SharedText& state) {
  state_ = state;
  Write();
}

void Viewer::Tell(const SharedText& devices) {
  devices_ = devices;
  Write();
}

void Viewer::Answer(std::string text) {
  answers_.push_back(std::make_shared<const std::string>(std::move(text)));
  Write();
}

void Viewer::Close() {
  beast::error_code ignored;
  beast::get_lowest_layer(socket_).socket().close(ignored);
}

void Viewer::Leave() {
  open_ = false;
  viewers_.Left(*this);
}

/// More than any page has to say.
bool Viewer::Hurries() {
  const double now = viewers_.Uptime();
  if (now - minuteOf_ > 60) {
    minuteOf_ = now;
    messages_ = 0;
  }
  return ++messages_ > kMessagesAMinute || answers_.size() >= kMostWaiting;
}

void Viewer::Read() {
  socket_.async_read(received_, [self = shared_from_this()](beast::error_code error, size_t) {
    if (error || self->Hurries()) {
      self->Close();
      self->Leave();
      return;
    }
    self->Received();
  });
}

/// Who guesses has to wait.
void Viewer::Received() {
  const auto bytes = received_.cdata();
  const bool understood = Understand({static_cast<const char*>(bytes.data()), bytes.size()});
  received_.consume(received_.size());
  if (understood) return Read();
  slow_.expires_after(kGuess);
  slow_.async_wait([self = shared_from_this()](beast::error_code stopped) {
    if (!stopped) self->Read();
  });
}

/// False for what only somebody says who tries something.
bool Viewer::Understand(std::string_view text) {
  if (const auto asked = AskedAt(text)) {
    Answer(fmt::format("{{\"asked\":{},\"now\":{:.6f}}}", *asked, viewers_.Uptime()));
  } else if (text == "hello") {
    Answer(fmt::format("{{\"challenge\":\"{}\"}}", line_.Challenge()));
  } else if (text.starts_with("say ")) {
    return viewers_.Said(*this, text);
  }
  return true;
}

void Viewer::Write() {
  if (sending_ || !open_) return;
  if (!answers_.empty()) {
    sending_ = answers_.front();
    answers_.pop_front();
  } else if (state_) {
    sending_ = std::exchange(state_, nullptr);
  } else {
    sending_ = std::exchange(devices_, nullptr);
  }
  if (!sending_) return;
  socket_.text(true);
  socket_.async_write(boost::asio::buffer(*sending_),
                      [self = shared_from_this()](beast::error_code error, size_t) {
                        self->sending_.reset();
                        // What comes to an end here also ends the reading.
                        if (error) return self->Close();
                        self->Write();
                      });
}

}  // namespace corvanel
