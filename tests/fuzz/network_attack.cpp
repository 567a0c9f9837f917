// Strangers in the hall against the server: corvanel-network-attack COUNT SEED
// So many attacks of every kind from several threads, while one page shows the session, one device
// leads it, and the clock ticks. Exits with 1 when one of them suffered or a stranger led.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <nlohmann/json.hpp>
#include <numeric>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "network/room_teller.h"
#include "network/web_server.h"
#include "tests/fuzz/stranger.h"
#include "tests/support/network_bench.h"
#include "tests/support/remote_device.h"

namespace corvanel {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;

constexpr unsigned kThreads = 4;
constexpr auto kTick = milliseconds(100);
constexpr double kLateTick = 0.25;  // seconds; that much only where nothing else slows it down
constexpr double kPatience = 10;    // seconds until an answer, of those who mean well
constexpr auto kPause = milliseconds(700);  // between their words; 120 a minute are taken
const RemoteDevice kAnn = {std::string(64, 'a'), "Ann's phone"};

double Uptime() {
  static const auto start = std::chrono::steady_clock::now();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double ResidentMegabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::strtod(line.c_str() + 6, nullptr) / 1024;
  }
  return 0;
}

/// Whether a tick can be late for reasons of its own.
bool Slowed() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  return true;
#else
  double load = 0;
  return getloadavg(&load, 1) != 1 || load > std::thread::hardware_concurrency() / 2.0;
#endif
}

/// A page or a device that means well. It goes on until it is stopped, and complains.
class Guest {
 public:
  Guest(Hall& hall, const char* name) : hall_(hall), name_(name), caller_(hall.port) {
    if (!caller_.Upgrade()) Complain("is turned away");
  }

  /// Hears what it is told, until `enough` of it holds; false and a complaint when that never
  /// comes.
  bool Hear(const std::function<bool(const json&)>& enough, const char* missing) {
    const double until = Uptime() + kPatience;
    while (Uptime() < until) {
      const auto text = caller_.Hear(until - Uptime());
      if (text && enough(json::parse(*text))) return true;
    }
    Complain(missing);
    return false;
  }
  bool Say(const std::string& text) { return caller_.Say(text); }

 private:
  void Complain(const char* what) { hall_.faults.Tell(fmt::format("the {} {}", name_, what)); }

  Hall& hall_;
  const char* name_;
  WebCaller caller_;
};

/// Asks for the time and is shown every state. Returns how many of them.
long Watch(Hall& hall, const std::stop_token& stopped) {
  Guest page(hall, "page");
  long states = 0;
  for (int question = 1; !stopped.stop_requested(); ++question) {
    page.Say(fmt::format("time {}", question));
    const bool answered = page.Hear(
        [&](const json& told) {
          states += told.contains("room") ? 1 : 0;
          return told.value("asked", 0) == question;
        },
        "is not told the time");
    if (!answered) break;
    std::this_thread::sleep_for(kPause);
  }
  return states;
}

/// Pauses the session and goes on with it. Returns the words that it said.
std::vector<std::string> Lead(Hall& hall, const std::stop_token& stopped) {
  Guest phone(hall, "device");
  SpeakingDevice ann(kAnn.key);
  std::vector<std::string> words;
  phone.Say("hello");
  phone.Hear(
      [&](const json& told) {
        if (told.contains("challenge")) ann.Meet(told["challenge"]);
        return told.contains("challenge");
      },
      "is not challenged");
  phone.Say(ann.Say("here", Uptime()));
  for (uint32_t number = 2; !stopped.stop_requested(); ++number) {
    words.emplace_back(number % 2 == 0 ? "pause" : "resume");
    const std::string word = ann.Say(words.back(), Uptime());
    hall.overheard.Add(word);
    phone.Say(word);
    const bool obeyed = phone.Hear(
        [&](const json& told) {
          if (told.value("word", 0U) != number) return false;
          if (told["refused"] != "") hall.faults.Tell("the device is refused: " + told.dump());
          return true;
        },
        "is not obeyed");
    if (!obeyed) break;
    std::this_thread::sleep_for(kPause);
  }
  return words;
}

/// A clock that ticks in this thread and does what devices say, as the program does.
class Desk {
 public:
  Desk() {
    keeper_.kept = TextOf({kAnn});
    desk_.Load();
    const RemoteDevice bob = {std::string(64, 'b'), "Bob's phone"};
    hall.usedKey = KeyOfCode(desk_.Invite());
    desk_.Hear({0, 0, bob, "join", hall.usedKey, "", ""});
    hall.openId = RemoteDevice{KeyOfCode(desk_.Code()), ""}.Id();
    hall.uptime = Uptime;
    hall.deviceKey = kAnn.key;
    server_ = std::move(
        WebServer::Listen("127.0.0.1", 0,
                          {Uptime, [](const std::string& file) { return std::optional(file); },
                           [this](const RemoteWord& word) {
                             const std::lock_guard lock(mutex_);
                             heard_.push_back(word);
                           }},
                          // All strangers come from one address here.
                          {.viewersFrom = 1000, .visitorsFrom = 100})
            .Value());
    hall.port = server_->Port();
    bench_.broadcast.Add(teller_);
    bench_.broadcast.Add(desk_);
    desk_.SpeakBy(server_.get());
    teller_.TellTo([this](const RoomState& state) { server_->Show(state); });
    bench_.clock.Start(1);
  }
  ~Desk() {
    teller_.TellTo({});
    desk_.SpeakBy(nullptr);
  }
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  void TickUntil(const std::atomic<bool>& ended) {
    auto due = std::chrono::steady_clock::now();
    while (!ended) {
      due = std::max(due + kTick, std::chrono::steady_clock::now());
      std::this_thread::sleep_until(due);
      const std::chrono::duration<double> late = std::chrono::steady_clock::now() - due;
      longest = std::max(longest, late.count());
      bench_.Pass(Uptime() - bench_.time.Elapsed());
      Obey();
    }
  }
  size_t Pages() const { return server_->ViewerCount(); }

  Hall hall;
  std::vector<std::string> obeyed;
  double longest = 0;  // seconds that a tick was late

 private:
  void Obey() {
    std::vector<RemoteWord> words;
    {
      const std::lock_guard lock(mutex_);
      words.swap(heard_);
    }
    for (const RemoteWord& word : words) {
      desk_.Hear(word);
      obeyed.push_back(word.text);
      if (bench_.clock.State().paused != (word.text == "pause")) {
        hall.faults.Tell("the clock does not stand as the device had it: " + word.text);
      }
    }
  }

  ClockBench bench_;
  Notices notices_{bench_.broadcast};
  FakeDeviceKeeper keeper_;
  RoomTeller teller_{{bench_.session, bench_.clock, bench_.time}};
  RemoteDesk desk_{{bench_.clock, notices_, keeper_}};
  std::mutex mutex_;
  std::vector<RemoteWord> heard_;
  std::unique_ptr<WebServer> server_;
};

struct Tally {
  std::atomic<long> attacks = 0;
  std::atomic<long> answered = 0;
};

void Attack(Hall& hall, long attacks, unsigned seed) {
  const auto& kinds = Stranger::Kinds();
  std::vector<Tally> tallies(kinds.size());
  std::atomic<long> left = attacks;
  {
    std::vector<std::jthread> threads;
    for (unsigned thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([&, stranger = Stranger(hall, seed * kThreads + thread)]() mutable {
        while (--left >= 0) {
          const size_t kind = stranger.Below(kinds.size());
          ++tallies[kind].attacks;
          if ((stranger.*kinds[kind].attack)()) ++tallies[kind].answered;
        }
      });
    }
  }
  for (size_t i = 0; i < kinds.size(); ++i) {
    fmt::print("{}\t{}, {} answered\n", kinds[i].name, tallies[i].attacks.load(),
               tallies[i].answered.load());
  }
}

/// Whatever strangers left behind must be gone.
void LookAround(Desk& desk) {
  Hall& hall = desk.hall;
  hall.loiterers.SeeOut();
  const double until = Uptime() + 30;
  while (desk.Pages() > 2 && Uptime() < until) std::this_thread::sleep_for(kTick);
  if (desk.Pages() != 2) hall.faults.Tell(fmt::format("{} pages are left, not 2", desk.Pages()));
  WebCaller caller(hall.port);
  caller.Send("GET /state HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n\r\n");
  while (caller.Receive(kPatience)) continue;
  const size_t body = caller.Received().find("\r\n\r\n");
  if (body == std::string::npos || !json::accept(caller.Received().substr(body))) {
    hall.faults.Tell("the state is not told: " + caller.Received());
  }
}

int Run(long attacks, unsigned seed) {
  const bool slowed = Slowed();
  Desk desk;
  long states = 0;
  std::vector<std::string> said;
  std::atomic<bool> ended = false;
  const double before = ResidentMegabytes();
  std::jthread order([&] {
    std::jthread page([&](const std::stop_token& stopped) { states = Watch(desk.hall, stopped); });
    std::jthread phone([&](const std::stop_token& stopped) { said = Lead(desk.hall, stopped); });
    Attack(desk.hall, attacks, seed);
    LookAround(desk);
    phone.request_stop();
    phone.join();
    page.request_stop();
    page.join();
    ended = true;
  });
  desk.TickUntil(ended);
  order.join();
  Faults& faults = desk.hall.faults;
  if (desk.obeyed != said) {
    faults.Tell(fmt::format("{} words were obeyed, {} said", desk.obeyed.size(), said.size()));
  }
  if (states < 2) faults.Tell("the page is not shown what changes");
  if (!slowed && desk.longest > kLateTick) faults.Tell("a tick was late");
  fmt::print("stayed until the server ended it\t{}\n", desk.hall.loiterers.Ended());
  fmt::print("words of the device\t{}\nstates on the page\t{}\n", said.size(), states);
  fmt::print("latest tick, ms\t{:.1f}{}\n", 1000 * desk.longest, slowed ? " (not judged)" : "");
  fmt::print("memory, MB\t{:.1f} before, {:.1f} after\n", before, ResidentMegabytes());
  fmt::print("{} attacks in {:.0f} s, {} faults\n", attacks, Uptime(), faults.Count());
  return faults.Count() == 0 ? 0 : 1;
}

}  // namespace
}  // namespace corvanel

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: corvanel-network-attack COUNT SEED\n", stderr);
    return 2;
  }
  return corvanel::Run(std::strtol(argv[1], nullptr, 10),
                       static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)));
}
