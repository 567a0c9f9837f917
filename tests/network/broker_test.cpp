// Rooms and a real broker.

#include "network/broker.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/support/fakes.h"
#include "tests/support/network_bench.h"

namespace corvanel {
namespace {

using nlohmann::json;

constexpr double kPatience = 20;  // seconds; a broker that was away is tried again within two

double Uptime() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Mosquitto, on a port of its own, with a password for "hall".
class Mosquitto {
 public:
  Mosquitto() : port_(WebServer::Listen("127.0.0.1", 0, kNoParts, {}).Value()->Port()) {
    folder_ = std::filesystem::temp_directory_path() / fmt::format("corvanel-broker-{}", getpid());
    std::filesystem::create_directories(folder_);
    std::ofstream(folder_ / "mosquitto.conf") << fmt::format(
        "listener {} 127.0.0.1\nallow_anonymous false\npassword_file {}/passwords\nuser root\n",
        port_, folder_.string());
    // Of "secret", for "hall".
    std::ofstream(folder_ / "passwords") << "";
    Run({"mosquitto_passwd", "-b", (folder_ / "passwords").c_str(), "hall", "secret"}, true);
    Start();
  }
  ~Mosquitto() {
    Kill();
    std::filesystem::remove_all(folder_);
  }
  Mosquitto(const Mosquitto&) = delete;
  Mosquitto& operator=(const Mosquitto&) = delete;

  void Start() { process_ = Run({"mosquitto", "-c", (folder_ / "mosquitto.conf").c_str()}, false); }
  void Kill() {
    if (process_ <= 0) return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = 0;
  }
  void Hold() const { kill(process_, SIGSTOP); }
  void GoOn() const { kill(process_, SIGCONT); }
  std::string Place(const std::string& user) const {
    return fmt::format("mqtt://{}@127.0.0.1:{}", user, port_);
  }

 private:
  static pid_t Run(std::vector<const char*> words, bool waits) {
    words.push_back(nullptr);
    const pid_t process = fork();
    if (process == 0) {
      const int nowhere = open("/dev/null", O_RDWR);
      dup2(nowhere, STDOUT_FILENO);
      dup2(nowhere, STDERR_FILENO);
      setenv("PATH", "/usr/sbin:/usr/bin:/sbin:/bin", 1);
      execvp(words[0], const_cast<char**>(words.data()));
      _exit(127);
    }
    if (waits) waitpid(process, nullptr, 0);
    return process;
  }

  int port_;
  std::filesystem::path folder_;
  pid_t process_ = 0;
};

/// A hall with its clock, its desk and what its own pages of rooms would be told.
struct Hall {
  Hall(const std::string& name, const std::string& broker, const std::string& password) {
    bench.session.options.NetworkRoom = name;
    bench.session.options.NetworkBroker = broker;
    bench.session.options.NetworkBrokerPassword = password;
    network.desk.Apply();
  }
  std::string Line() {
    network.DoLater();
    return bench.notices.empty() ? "" : bench.notices[0].text;
  }

  ClockBench bench;
  Notices notices{bench.broadcast};
  NetworkBench network{bench, notices};
};

class BrokerTest : public testing::Test {
 protected:
  BrokerTest() { Listen(); }

  /// Somebody who shows all rooms.
  void Listen() {
    auto place = BrokerPlace::Of(mosquitto_.Place("hall")).Value();
    place.password = "secret";
    listener_ = std::make_unique<Broker>(Broker::Parts{place, "listener", Uptime,
                                                       [this](const BrokerWord& word) {
                                                         const std::lock_guard lock(mutex_);
                                                         rooms_.Hear(word);
                                                       },
                                                       [](const Status&) {}});
  }
  json Room(const std::string& name) {
    const std::lock_guard lock(mutex_);
    const json all = json::parse(rooms_.Text(Uptime()))["rooms"];
    for (const json& room : all) {
      if (room["name"] == name) return room;
    }
    return {};
  }
  std::string CaptionOf(const std::string& name) {
    const json room = Room(name);
    return room.is_null() ? "" : std::string(room["room"]["faces"][0]["caption"]);
  }
  static bool Comes(const std::function<bool()>& what) {
    const double until = Uptime() + kPatience;
    while (!what() && Uptime() < until) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return what();
  }

  Mosquitto mosquitto_;
  std::mutex mutex_;
  Rooms rooms_;
  std::unique_ptr<Broker> listener_;
};

TEST_F(BrokerTest, RoomsAreHeardOfAsTheyStand) {
  Hall a("Hall A", mosquitto_.Place("hall"), "secret");
  Hall b("Hall B", mosquitto_.Place("hall"), "secret");
  EXPECT_TRUE(Comes([&] { return CaptionOf("Hall A") == "The session has not begun"; }));
  a.bench.clock.Start(2);
  EXPECT_TRUE(Comes([&] { return CaptionOf("Hall A").find("Round 2") != std::string::npos; }))
      << CaptionOf("Hall A");
  EXPECT_EQ(CaptionOf("Hall B"), "The session has not begun");
  EXPECT_TRUE(Comes([&] { return Room("Hall A")["here"] == true; }));
  a.bench.clock.Do(SessionCommand::Pause);
  EXPECT_TRUE(Comes([&] { return Room("Hall A")["room"]["faces"][0]["paused"] == true; }));
  EXPECT_EQ(a.Line(), "");
}

TEST_F(BrokerTest, ABrokerThatWentAndCameBackIsToldAgain) {
  Hall a("Hall A", mosquitto_.Place("hall"), "secret");
  ASSERT_TRUE(Comes([&] { return !Room("Hall A").is_null(); }));
  mosquitto_.Kill();
  EXPECT_TRUE(Comes([&] { return a.Line().find("Other rooms do not hear") == 0; })) << a.Line();
  a.bench.clock.Start(3);
  mosquitto_.Start();
  EXPECT_TRUE(Comes([&] { return CaptionOf("Hall A").find("Round 3") != std::string::npos; }));
  EXPECT_TRUE(Comes([&] { return a.Line().empty(); })) << a.Line();
}

TEST_F(BrokerTest, ARoomThatGoesIsMissed) {
  {
    Hall a("Hall A", mosquitto_.Place("hall"), "secret");
    ASSERT_TRUE(Comes([&] { return Room("Hall A")["here"] == true; }));
  }
  EXPECT_TRUE(Comes([&] { return Room("Hall A")["here"] == false; }));
  EXPECT_FALSE(CaptionOf("Hall A").empty()) << "how it stood last stays";
}

TEST_F(BrokerTest, NobodyWaitsForABrokerThatHangs) {
  Hall a("Hall A", mosquitto_.Place("hall"), "secret");
  ASSERT_TRUE(Comes([&] { return !Room("Hall A").is_null(); }));
  mosquitto_.Hold();
  const double start = Uptime();
  for (int16_t round = 1; round < 8; ++round) a.bench.clock.Start(round);
  a.bench.session.options.NetworkBroker = "";
  a.network.desk.Apply();
  a.bench.session.options.NetworkBroker = mosquitto_.Place("hall");
  a.network.desk.Apply();
  EXPECT_LT(Uptime() - start, 1) << "it would be for minutes";
  mosquitto_.GoOn();
  EXPECT_TRUE(Comes([&] { return CaptionOf("Hall A").find("Round 7") != std::string::npos; }))
      << CaptionOf("Hall A");
}

TEST_F(BrokerTest, WhyItDoesNotWorkIsTold) {
  const struct {
    const char* room;
    std::string broker;
    const char* password;
    const char* line;
  } rows[] = {
      {"Hall A", mosquitto_.Place("hall"), "wrong", "not authorised"},
      {"Hall A", mosquitto_.Place("nobody"), "secret", "not authorised"},
      {"", mosquitto_.Place("hall"), "secret", "this room has no name"},
      {"Hall A", "two words", "secret", "\"two words\" is no address of a broker"},
      {"Hall A", "mqtts" + mosquitto_.Place("hall").substr(4), "secret", "hear of this one: "},
  };
  for (const auto& row : rows) {
    Hall hall(row.room, row.broker, row.password);
    EXPECT_TRUE(Comes([&] { return hall.Line().find(row.line) != std::string::npos; }))
        << row.line << ": " << hall.Line();
    hall.bench.session.options.NetworkBroker = "";
    hall.network.desk.Apply();
    EXPECT_EQ(hall.Line(), "");
  }
}

TEST_F(BrokerTest, TwoRoomsOfOneNameAreToldOf) {
  Hall a("Hall", mosquitto_.Place("hall"), "secret");
  ASSERT_TRUE(Comes([&] { return !Room("Hall").is_null(); }));
  Hall b("Hall", mosquitto_.Place("hall"), "secret");
  b.bench.clock.Start(4);
  EXPECT_TRUE(Comes([&] { return a.Line().find("is called “Hall”, too") != std::string::npos; }))
      << a.Line();
}

}  // namespace
}  // namespace corvanel
