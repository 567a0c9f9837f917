#include "network/viewer.h"

#include <fmt/format.h>

#include <charconv>
#include <utility>

namespace corvanel {
namespace {

namespace beast = boost::beast;
namespace websocket = beast::websocket;

constexpr size_t kLongestMessage = 256;  // bytes, of what a page sends
constexpr int kMessagesAMinute = 120;
constexpr size_t kMostWaiting = 4;  // answers
constexpr auto kHandshake = std::chrono::seconds(10);
constexpr auto kSilence = std::chrono::seconds(40);

/// The number that a page sent with its question for the time; nothing for all else.
std::optional<double> AskedAt(std::string_view text) {
  constexpr std::string_view kQuestion = "time ";
  double asked = 0;
  if (!text.starts_with(kQuestion)) return std::nullopt;
  const char* const end = text.data() + text.size();
  const auto [rest, failure] = std::from_chars(text.data() + kQuestion.size(), end, asked);
  return failure == std::errc() && rest == end ? std::optional(asked) : std::nullopt;
}

}  // namespace

Viewer::Viewer(beast::tcp_stream stream, Viewers& viewers)
    : socket_(std::move(stream)), viewers_(viewers) {
  beast::get_lowest_layer(socket_).expires_never();
  websocket::stream_base::timeout times{kHandshake, kSilence, true};
  socket_.set_option(times);
  socket_.read_message_max(kLongestMessage);
  socket_.auto_fragment(false);
}

void Viewer::Accept(const WebRequest& request) {
  socket_.async_accept(request, [self = shared_from_this()](beast::error_code error) {
    if (error) return;
    self->joined_ = true;
    self->viewers_.Joined(self);
    self->Read();
  });
}

void Viewer::Send(const SharedText& state) {
  state_ = state;
  Write();
}

void Viewer::Close() {
  beast::error_code ignored;
  beast::get_lowest_layer(socket_).socket().close(ignored);
}

void Viewer::Leave() {
  if (std::exchange(joined_, false)) viewers_.Left(*this);
}

/// More than any page has to ask.
bool Viewer::Hurries() {
  const double now = viewers_.Uptime();
  if (now - secondOf_ > 60) {
    secondOf_ = now;
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
    self->Answer();
    self->received_.consume(self->received_.size());
    self->Read();
  });
}

void Viewer::Answer() {
  const auto bytes = received_.cdata();
  const auto asked = AskedAt({static_cast<const char*>(bytes.data()), bytes.size()});
  if (!asked) return;
  answers_.push_back(std::make_shared<const std::string>(
      fmt::format("{{\"asked\":{},\"now\":{:.6f}}}", *asked, viewers_.Uptime())));
  Write();
}

void Viewer::Write() {
  if (sending_) return;
  if (!answers_.empty()) {
    sending_ = answers_.front();
    answers_.pop_front();
  } else {
    sending_ = std::exchange(state_, nullptr);
  }
  if (!sending_) return;
  socket_.text(true);
  socket_.async_write(boost::asio::buffer(*sending_),
                      [self = shared_from_this()](beast::error_code error, size_t) {
                        self->sending_.reset();
                        if (error) {
                          self->Leave();
                        } else {
                          self->Write();
                        }
                      });
}

}  // namespace corvanel
