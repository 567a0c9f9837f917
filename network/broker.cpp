#include "network/broker.h"

#include <fmt/format.h>
#include <mosquitto.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace corvanel {
namespace {

constexpr int kLook = 50;   // milliseconds within which a change goes out
constexpr int kAlive = 10;  // seconds of silence, after which the broker looks for us
constexpr auto kAgain = std::chrono::seconds(2);  // before the next attempt to connect
constexpr int kPort = 1883;
constexpr int kTlsPort = 8883;
constexpr int kGreatest = 65535;
constexpr bool kKept = true;
constexpr size_t kMostOnTheWay = 100;  // of our own words
constexpr int kOnce = 0;               // quality of service: what got lost is said again

/// What cannot be done for want of memory is left out.
void Guarded(const std::function<void()>& step) {
  try {
    step();
  } catch (const std::exception&) {
    return;
  }
}

bool TakeOff(std::string_view& text, std::string_view beginning) {
  if (!text.starts_with(beginning)) return false;
  text.remove_prefix(beginning.size());
  return true;
}

}  // namespace

Result<BrokerPlace> BrokerPlace::Of(const std::string& text) {
  const Error none{0, fmt::format("\"{}\" is no address of a broker", text)};
  BrokerPlace place;
  std::string_view rest = text;
  place.tls = TakeOff(rest, "mqtts://");
  if (!place.tls) TakeOff(rest, "mqtt://");
  place.port = place.tls ? kTlsPort : kPort;
  if (const size_t at = rest.rfind('@'); at != std::string_view::npos) {
    place.user = rest.substr(0, at);
    rest.remove_prefix(at + 1);
  }
  if (const size_t colon = rest.rfind(':'); colon != std::string_view::npos) {
    const std::string_view digits = rest.substr(colon + 1);
    const char* const end = digits.data() + digits.size();
    const auto [stopped, failure] = std::from_chars(digits.data(), end, place.port);
    if (failure != std::errc() || stopped != end || place.port < 1 || place.port > kGreatest) {
      return none;
    }
    rest.remove_suffix(digits.size() + 1);
  }
  if (rest.empty() || rest.find_first_of(" /\\") != std::string_view::npos) return none;
  place.host = rest;
  return place;
}

/// What the thread works with; it lives as long as either needs it.
class Broker::Line {
 public:
  explicit Line(Parts parts) : parts_(std::move(parts)) { mosquitto_lib_init(); }
  ~Line() { mosquitto_lib_cleanup(); }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  void Show(const RoomState& state) {
    const std::lock_guard lock(mutex_);
    state_ = state;
    told_ = false;
  }

  /// Nothing is told to the owner any more when it returns.
  void Stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    wake_.notify_one();
  }

  void Run() {
    while (!Stopped()) {
      Guarded([this] { Speak(); });
      std::unique_lock lock(mutex_);
      wake_.wait_for(lock, kAgain, [this] { return stopped_; });
    }
  }

 private:
  struct Close {
    void operator()(mosquitto* client) const { mosquitto_destroy(client); }
  };
  using Client = std::unique_ptr<mosquitto, Close>;

  bool Stopped() {
    const std::lock_guard lock(mutex_);
    return stopped_;
  }
  void TellContact(const Status& contact) {
    const std::lock_guard lock(mutex_);
    if (!stopped_) parts_.contact(contact);
  }

  /// From one attempt to connect to the next. The broker says that we are gone when the connection
  /// ends in whatever way.
  void Speak() {
    const Client client(mosquitto_new(nullptr, true, this));
    if (!client) return;
    connected_ = false;
    int problem = Prepare(*client);
    const BrokerPlace& place = parts_.place;
    if (problem == MOSQ_ERR_SUCCESS) {
      problem = mosquitto_connect_async(client.get(), place.host.c_str(), place.port, kAlive);
    }
    while (problem == MOSQ_ERR_SUCCESS && !Stopped()) {
      problem = mosquitto_loop(client.get(), kLook, 1);
      if (connected_) Publish(*client);
    }
    if (problem == MOSQ_ERR_SUCCESS) return;
    const std::string failed = mosquitto_strerror(problem);
    const int refusal = std::exchange(refusal_, 0);
    TellContact(Error{problem, refusal == 0
                                   ? fmt::format("the broker cannot be reached ({})", failed)
                                   : fmt::format("the broker does not let it in ({})",
                                                 mosquitto_connack_string(refusal))});
  }

  int Prepare(mosquitto& client) const {
    const BrokerPlace& place = parts_.place;
    const std::string here = HereTopic(parts_.room);
    mosquitto_connect_callback_set(&client, [](mosquitto* of, void* line, int refusal) {
      Guarded([&] { static_cast<Line*>(line)->Connected(*of, refusal); });
    });
    mosquitto_message_callback_set(&client,
                                   [](mosquitto*, void* line, const mosquitto_message* message) {
                                     Guarded([&] { static_cast<Line*>(line)->Heard(*message); });
                                   });
    int problem = mosquitto_will_set(&client, here.c_str(), 1, kGone, kOnce, kKept);
    if (problem == MOSQ_ERR_SUCCESS && !place.user.empty()) {
      problem = mosquitto_username_pw_set(&client, place.user.c_str(), place.password.c_str());
    }
    if (problem == MOSQ_ERR_SUCCESS && place.tls) {
      problem = mosquitto_int_option(&client, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
    }
    return problem;
  }

  void Connected(mosquitto& client, int refusal) {
    refusal_ = refusal;
    connected_ = refusal == 0;
    said_.clear();
    if (!connected_) return;
    mosquitto_subscribe(&client, nullptr, kEveryState, kOnce);
    mosquitto_subscribe(&client, nullptr, kEveryHere, kOnce);
    const std::string here = HereTopic(parts_.room);
    mosquitto_publish(&client, nullptr, here.c_str(), 1, kHere, kOnce, kKept);
    {
      const std::lock_guard lock(mutex_);
      told_ = false;
    }
    TellContact({});
  }

  void Heard(const mosquitto_message& message) {
    const std::string text(static_cast<const char*>(message.payload),
                           static_cast<size_t>(message.payloadlen));
    if (message.topic == StateTopic(parts_.room) && !message.retain && !IsOurs(text)) {
      TellContact(Error{0, fmt::format("another room is called “{}”, too", parts_.room)});
    }
    const std::lock_guard lock(mutex_);
    if (!stopped_) parts_.heard({message.topic, text, message.retain, parts_.uptime()});
  }

  /// What we say comes back to us.
  bool IsOurs(const std::string& text) {
    const auto said = std::find(said_.begin(), said_.end(), text);
    if (said == said_.end()) return false;
    said_.erase(said_.begin(), std::next(said));
    return true;
  }

  /// What is new, and the same again after a while.
  void Publish(mosquitto& client) {
    std::string text;
    {
      const std::lock_guard lock(mutex_);
      if (stopped_ || !state_) return;
      const double now = parts_.uptime();
      if (told_ && now - toldAt_ < kBeat) return;
      told_ = true;
      toldAt_ = now;
      text = state_->Brief(now);
    }
    const std::string topic = StateTopic(parts_.room);
    mosquitto_publish(&client, nullptr, topic.c_str(), static_cast<int>(text.size()), text.data(),
                      kOnce, kKept);
    said_.push_back(text);
    if (said_.size() > kMostOnTheWay) said_.pop_front();
  }

  const Parts parts_;
  std::mutex mutex_;
  std::condition_variable wake_;
  bool stopped_ = false;
  std::optional<RoomState> state_;
  bool told_ = false;  // that state, since there is contact
  double toldAt_ = 0;  // uptime
  // Of the thread alone.
  bool connected_ = false;
  int refusal_ = 0;
  std::deque<std::string> said_;  // and not heard of yet
};

Broker::Broker(Parts parts) : line_(std::make_shared<Line>(std::move(parts))) {
  std::thread([line = line_] { line->Run(); }).detach();
}

Broker::~Broker() {
  line_->Stop();
}

void Broker::Show(const RoomState& state) {
  line_->Show(state);
}

}  // namespace corvanel
