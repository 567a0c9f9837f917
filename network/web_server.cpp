#include "network/web_server.h"

#include <algorithm>
#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <thread>
#include <utility>

#include "network/viewer.h"
#include "network/web_answer.h"

namespace corvanel {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;
using nlohmann::json;

constexpr auto kRequestComes = std::chrono::seconds(10);
constexpr auto kNoRoom = std::chrono::milliseconds(100);  // before the next connection is taken
constexpr uint32_t kLongestHead = 8192;                   // bytes of a request
constexpr uint64_t kLongestBody = 1024;                   // the same
constexpr auto kRoomsLook = std::chrono::milliseconds(100);
constexpr int kMostRequests = 100;            // on one connection
constexpr size_t kLongestSound = 16'000'000;  // bytes

constexpr auto kReplace = json::error_handler_t::replace;

/// The answer to a word of that number; 0 for one that was not understood.
std::string AnswerText(uint32_t number, const std::string& refusal) {
  return json{{"word", number}, {"refused", refusal}}.dump(-1, ' ', false, kReplace);
}

/// Unlike that of any other connection to this program.
uint64_t NewNumber() {
  static std::atomic<uint64_t> last = 0;
  return ++last;
}

}  // namespace

/// What a visitor needs of the server.
class Reception : public Sources {
 public:
  virtual void BecomesViewer(PageKind kind, WebStream stream, const asio::ip::address& from,
                             const WebRequest& request) = 0;
  virtual void VisitorLeaves(const asio::ip::address& from) = 0;
};

namespace {

/// A connection that asks for pages, one request after the other.
class Visitor : public std::enable_shared_from_this<Visitor> {
 public:
  Visitor(tcp::socket socket, const asio::ip::address& from, Reception& reception)
      : stream_(std::move(socket)), from_(from), reception_(reception) {}
  ~Visitor() { reception_.VisitorLeaves(from_); }
  Visitor(const Visitor&) = delete;
  Visitor& operator=(const Visitor&) = delete;

  void Read() {
    request_.emplace();
    request_->header_limit(kLongestHead);
    request_->body_limit(kLongestBody);
    stream_.expires_after(kRequestComes);
    http::async_read(
        stream_, received_, *request_,
        [self = shared_from_this()](beast::error_code error, size_t) { self->Received(error); });
  }

 private:
  void Received(beast::error_code error) {
    if (error == http::error::header_limit || error == http::error::body_limit) {
      return Write(Refusal(http::status::payload_too_large));
    }
    if (error && error.category() == make_error_code(http::error::bad_method).category()) {
      return Write(Refusal(http::status::bad_request));
    }
    if (error) return;
    const WebRequest request = request_->release();
    if (IsFromElsewhere(request)) return Write(Refusal(http::status::forbidden));
    if (!beast::websocket::is_upgrade(request)) {
      return Write(AnswerTo(request, reception_));
    }
    const bool session = request.target() == "/session";
    if (!session && request.target() != "/rooms") return Write(Refusal(http::status::not_found));
    reception_.BecomesViewer(session ? PageKind::Session : PageKind::Rooms, std::move(stream_),
                             from_, request);
  }

  void Write(WebAnswer answer) {
    answer_ = std::move(answer);
    if (++requests_ >= kMostRequests) answer_.head.keep_alive(false);
    serializer_.emplace(answer_.head);
    stream_.expires_after(kRequestComes);
    http::async_write_header(stream_, *serializer_,
                             [self = shared_from_this()](beast::error_code error, size_t) {
                               if (!error) self->WriteBody();
                             });
  }

  void WriteBody() {
    static const std::string kNone;
    asio::async_write(stream_, asio::buffer(answer_.body ? *answer_.body : kNone),
                      [self = shared_from_this()](beast::error_code error, size_t) {
                        self->answer_.body.reset();
                        if (!error && self->answer_.head.keep_alive()) return self->Read();
                        beast::error_code ignored;
                        self->stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
                      });
  }

  WebStream stream_;
  const asio::ip::address from_;
  Reception& reception_;
  beast::flat_buffer received_{kLongestHead + kLongestBody};
  std::optional<http::request_parser<http::string_body>> request_;
  WebAnswer answer_;
  std::optional<http::response_serializer<http::empty_body>> serializer_;
  int requests_ = 0;
};

}  // namespace

class WebServer::Impl : public Reception, public Viewers {
 public:
  Impl(Parts parts, const Limits& limits) : parts_(std::move(parts)), limits_(limits) {}
  /// The thread ends with what it is just doing; then all else goes.
  ~Impl() override { context_.stop(); }

  Status Open(const std::string& address, uint16_t port) {
    beast::error_code error;
    const auto place = asio::ip::make_address(address, error);
    if (!error) {
      const tcp::endpoint endpoint(place, port);
      acceptor_.open(endpoint.protocol(), error);
#ifndef _WIN32
      // There it would let others listen at the same port.
      if (!error) acceptor_.set_option(asio::socket_base::reuse_address(true), error);
#endif
      if (!error) acceptor_.bind(endpoint, error);
      if (!error) acceptor_.listen(asio::socket_base::max_listen_connections, error);
    }
    if (error) return Error{error.value(), error.message()};
    port_ = acceptor_.local_endpoint().port();
    Take();
    thread_ = std::jthread([this] { Run(); });
    return {};
  }

  void Show(RoomState state) {
    asio::post(context_, [this, state = std::move(state)]() mutable {
      // Another choice of sounds: files may have changed, too.
      if (!state.HasSoundsOf(state_)) sounds_.clear();
      state_ = std::move(state);
      const auto text = std::make_shared<const std::string>(state_.Message(parts_.uptime()));
      Send(PageKind::Session, text);
    });
  }

  void HearRoom(BrokerWord word) {
    asio::post(context_, [this, word = std::move(word)] { rooms_.Hear(word); });
  }

  /// Whoever is no longer let in starts anew, and finds that out.
  void Admit(const RemoteGate& gate) {
    asio::post(context_, [this, gate] {
      gate_ = gate;
      for (const auto& viewer : viewers_) {
        if (viewer->device && !gate_.Has(*viewer->device)) viewer->Close();
      }
    });
  }

  void TellDevices(const std::string& state) {
    asio::post(context_, [this, state] {
      devices_ = std::make_shared<const std::string>("{\"lead\":" + state + '}');
      for (const auto& viewer : viewers_) {
        if (viewer->device) viewer->Tell(devices_);
      }
    });
  }

  void Answer(const RemoteWord& word, const std::string& refusal) {
    asio::post(context_, [this, line = word.line, number = word.number, refusal] {
      const auto viewer =
          std::find_if(viewers_.begin(), viewers_.end(),
                       [&](const auto& candidate) { return candidate->Number() == line; });
      if (viewer != viewers_.end()) (*viewer)->Answer(AnswerText(number, refusal));
    });
  }

  uint16_t Port() const {
    return port_;
  }
  size_t ViewerCount() const {
    return count_;
  }

 private:
  void Take() {
    acceptor_.async_accept([this](beast::error_code error, tcp::socket socket) {
      if (error == asio::error::operation_aborted) return;
      // No more files can be open: others will be closed.
      if (error) {
        retry_.expires_after(kNoRoom);
        retry_.async_wait([this](beast::error_code stopped) {
          if (!stopped) Take();
        });
        return;
      }
      // First, so that nothing that goes wrong with this one keeps others out.
      Take();
      Welcome(std::move(socket));
    });
  }

  void Welcome(tcp::socket socket) {
    beast::error_code gone;
    const auto from = socket.remote_endpoint(gone).address();
    if (gone || visitors_ >= limits_.visitors || visitorsFrom_[from] >= limits_.visitorsFrom)
      return;
    socket.set_option(tcp::no_delay(true), gone);
    const auto visitor = std::make_shared<Visitor>(std::move(socket), from, *this);
    ++visitors_;
    ++visitorsFrom_[from];
    visitor->Read();
  }

  /// What cannot be done for want of memory is left out; the others are served on.
  void Run() {
    for (;;) {
      try {
        context_.run();
        return;
      } catch (const std::exception&) {
        continue;
      }
    }
  }

  std::string StateNow() const override {
    return state_.Now(parts_.uptime());
  }
  /// Read once, and never anything but a sound, whatever the settings name.
  SharedText Sound(size_t number) override {
    const std::string file = state_.Sound(number);
    if (file.empty()) return nullptr;
    const auto [known, added] = sounds_.try_emplace(file);
    if (added) {
      auto bytes = parts_.sound(file);
      if (bytes && bytes->size() <= kLongestSound && IsSound(*bytes)) {
        known->second = std::make_shared<const std::string>(std::move(*bytes));
      }
    }
    return known->second;
  }
  void VisitorLeaves(const asio::ip::address& from) override {
    --visitors_;
    if (--visitorsFrom_[from] == 0) visitorsFrom_.erase(from);
  }
  void BecomesViewer(PageKind kind, WebStream stream, const asio::ip::address& from,
                     const WebRequest& request) override {
    const auto others = std::count_if(viewers_.begin(), viewers_.end(),
                                      [&](const auto& other) { return other->From() == from; });
    if (viewers_.size() >= limits_.viewers || static_cast<size_t>(others) >= limits_.viewersFrom) {
      return;
    }
    const auto viewer = std::make_shared<Viewer>(NewNumber(), kind, std::move(stream), from, *this);
    viewers_.insert(viewer);
    count_ = viewers_.size();
    viewer->Accept(request);
  }

  void Joined(Viewer& viewer) override {
    if (viewer.Kind() == PageKind::Session) {
      viewer.Send(std::make_shared<const std::string>(state_.Message(parts_.uptime())));
    } else {
      viewer.Send(std::make_shared<const std::string>(rooms_.Text(parts_.uptime())));
      LookAtRooms();
    }
  }

  /// However many words come from however many rooms, their pages are told so often at most; never
  /// while there are none.
  void LookAtRooms() {
    roomsLook_.expires_after(kRoomsLook);
    roomsLook_.async_wait([this](beast::error_code stopped) {
      const bool seen = std::any_of(viewers_.begin(), viewers_.end(), [](const auto& viewer) {
        return viewer->Kind() == PageKind::Rooms;
      });
      if (stopped || !seen) return;
      const std::string text = rooms_.Text(parts_.uptime());
      if (text != roomsText_) Send(PageKind::Rooms, std::make_shared<const std::string>(text));
      roomsText_ = text;
      LookAtRooms();
    });
  }

  void Send(PageKind kind, const SharedText& text) {
    for (const auto& viewer : viewers_) {
      if (viewer->Kind() == kind) viewer->Send(text);
    }
  }
  void Left(Viewer& viewer) override {
    viewers_.erase(viewer.shared_from_this());
    count_ = viewers_.size();
  }
  double Uptime() const override {
    return parts_.uptime();
  }

  bool Said(Viewer& viewer, std::string_view message) override {
    auto heard = viewer.Line().Hear(message, gate_, parts_.uptime());
    if (!heard) {
      const std::string& why = heard.Failure().description;
      viewer.Answer(AnswerText(0, why));
      return why != "unknown";
    }
    RemoteWord& word = heard.Value();
    word.line = viewer.Number();
    const bool comes = !word.invitation.empty();
    if (comes) gate_.LetIn(word.device);
    if (!viewer.device) {
      viewer.device = word.device;
      json welcome = {{"device", word.device.name}};
      if (comes) welcome.update({{"public", word.publicKey}, {"proof", word.proof}});
      viewer.Answer(welcome.dump(-1, ' ', false, kReplace));
      viewer.Tell(devices_);
    }
    if (comes || word.text != "here") parts_.heard(word);
    return true;
  }

  Parts parts_;
  Limits limits_;
  size_t visitors_ = 0;
  std::map<asio::ip::address, size_t> visitorsFrom_;
  RoomState state_;
  Rooms rooms_;
  std::string roomsText_;  // that the pages of rooms were sent last
  RemoteGate gate_;
  SharedText devices_ = std::make_shared<const std::string>("{}");
  std::map<std::string, SharedText> sounds_;  // by file, as they were read
  std::atomic<size_t> count_ = 0;
  std::atomic<uint16_t> port_ = 0;
  asio::io_context context_{1};
  tcp::acceptor acceptor_{context_};
  asio::steady_timer retry_{context_};
  asio::steady_timer roomsLook_{context_};
  std::set<std::shared_ptr<Viewer>> viewers_;
  std::jthread thread_;
};

WebServer::Limits WebServer::Limits::Within(size_t openFiles) {
  constexpr size_t kItsOwn = 400;
  Limits limits;
  limits.visitors = std::min(limits.visitors, openFiles / 8);
  const size_t taken = kItsOwn + limits.visitors;
  limits.viewers = openFiles > taken ? std::min(limits.viewers, openFiles - taken) : 0;
  return limits;
}

WebServer::WebServer(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
WebServer::~WebServer() = default;

Result<std::unique_ptr<WebServer>> WebServer::Listen(const std::string& address, uint16_t port,
                                                     const Parts& parts, const Limits& limits) {
  auto impl = std::make_unique<Impl>(parts, limits);
  if (const Status opened = impl->Open(address, port); !opened) return opened.Failure();
  return std::unique_ptr<WebServer>(new WebServer(std::move(impl)));
}

void WebServer::Show(RoomState state) {
  impl_->Show(std::move(state));
}

void WebServer::HearRoom(BrokerWord word) {
  impl_->HearRoom(std::move(word));
}

void WebServer::Admit(const RemoteGate& gate) {
  impl_->Admit(gate);
}

void WebServer::TellDevices(const std::string& state) {
  impl_->TellDevices(state);
}

void WebServer::Answer(const RemoteWord& word, const std::string& refusal) {
  impl_->Answer(word, refusal);
}

uint16_t WebServer::Port() const {
  return impl_->Port();
}

size_t WebServer::ViewerCount() const {
  return impl_->ViewerCount();
}

}  // namespace corvanel
