// The server as browsers, other programs and strangers meet it.

#include "network/web_server.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <boost/asio.hpp>
#include <boost/beast.hpp>
#include <nlohmann/json.hpp>
#include <random>
#include <thread>

#include "network/room_teller.h"
#include "tests/support/network_bench.h"

namespace corvanel {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;
using nlohmann::json;

class WebServerTest : public testing::Test {
 protected:
  explicit WebServerTest(WebServer::Limits limits = {}) {
    auto server = WebServer::Listen(
        "127.0.0.1", 0,
        {[this] { return uptime_.load(); },
         [](const std::string& file) {
           return std::optional((file == "secret.txt" ? "" : "RIFF the bytes of ") + file);
         },
         [](const RemoteWord&) {}},
        limits);
    EXPECT_TRUE(server) << server.Failure().description;
    server_ = std::move(server.Value());
    bench_.broadcast.Add(teller_);
    teller_.TellTo([this](const RoomState& state) { server_->Show(state); });
    bench_.session.settings.sounds.files[0] = "bell.wav";
    bench_.clock.Start(1);
  }

  tcp::socket Connect() {
    tcp::socket socket(context_);
    socket.connect({asio::ip::make_address("127.0.0.1"), server_->Port()});
    return socket;
  }
  http::response<http::string_body> Get(const std::string& path,
                                        http::verb verb = http::verb::get) {
    tcp::socket socket = Connect();
    http::request<http::empty_body> request{verb, path, 11};
    request.set(http::field::host, "127.0.0.1");
    http::write(socket, request);
    beast::flat_buffer buffer;
    http::response_parser<http::string_body> parser;
    if (verb == http::verb::head) parser.skip(true);
    http::read(socket, buffer, parser);
    return parser.release();
  }
  /// What comes back for these bytes, until the server ends the connection.
  std::string Raw(const std::string& bytes) {
    tcp::socket socket = Connect();
    beast::error_code error;
    asio::write(socket, asio::buffer(bytes), error);
    socket.shutdown(tcp::socket::shutdown_send, error);
    std::string answer;
    asio::read(socket, asio::dynamic_buffer(answer), error);
    return answer;
  }

  asio::io_context context_;
  std::atomic<double> uptime_ = 0;
  ClockBench bench_;
  std::unique_ptr<WebServer> server_;
  RoomTeller teller_{{bench_.session, bench_.clock, bench_.time}};
};

/// A page as far as the server sees one.
class Page {
 public:
  explicit Page(tcp::socket socket) : socket_(std::move(socket)) {
    socket_.handshake("127.0.0.1", "/session");
  }
  json Read() {
    buffer_.clear();
    socket_.read(buffer_);
    return json::parse(beast::buffers_to_string(buffer_.data()));
  }
  void Write(const std::string& text) { socket_.write(asio::buffer(text)); }
  bool Closed() {
    beast::error_code error;
    while (!error) {
      buffer_.clear();
      socket_.read(buffer_, error);
    }
    return true;
  }

 private:
  beast::websocket::stream<tcp::socket> socket_;
  beast::flat_buffer buffer_;
};

TEST_F(WebServerTest, PathsLeadToTheirPagesAndNowhereElse) {
  struct Row {
    const char* path;
    http::verb verb;
    unsigned status;
    const char* type;
  };
  const Row rows[] = {
      {"/", http::verb::get, 200, "text/html; charset=utf-8"},
      {"/?x=../..", http::verb::get, 200, "text/html; charset=utf-8"},
      {"/display.js", http::verb::get, 200, "text/javascript; charset=utf-8"},
      {"/room.js", http::verb::head, 200, "text/javascript; charset=utf-8"},
      {"/state", http::verb::get, 200, "application/json"},
      {"/../etc/passwd", http::verb::get, 404, "text/plain; charset=utf-8"},
      {"/%2e%2e/etc/passwd", http::verb::get, 404, "text/plain; charset=utf-8"},
      {"//display.js", http::verb::get, 404, "text/plain; charset=utf-8"},
      {"/sound/0", http::verb::get, 200, "application/octet-stream"},
      {"/sound/9", http::verb::get, 404, "text/plain; charset=utf-8"},
      {"/sound/00", http::verb::get, 404, "text/plain; charset=utf-8"},
      {"/sound/../0", http::verb::get, 404, "text/plain; charset=utf-8"},
      {"/session", http::verb::get, 404, "text/plain; charset=utf-8"},
      {"/", http::verb::post, 405, "text/plain; charset=utf-8"},
      {"/", http::verb::delete_, 405, "text/plain; charset=utf-8"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.path);
    const auto answer = Get(row.path, row.verb);
    EXPECT_EQ(answer.result_int(), row.status);
    EXPECT_EQ(answer[http::field::content_type], row.type);
    EXPECT_NE(answer["Content-Security-Policy"].find("default-src 'none'"), std::string::npos);
  }
  EXPECT_EQ(Get("/sound/0").body(), "RIFF the bytes of bell.wav");
  bench_.session.settings.sounds.files[1] = "secret.txt";
  bench_.clock.Refresh();
  EXPECT_EQ(Get("/sound/1").result_int(), 404U) << "is no sound";
  EXPECT_EQ(json::parse(Get("/state").body())["caption"], "Time remaining for Round 1 of 12");
}

TEST_F(WebServerTest, APageIsToldTheStateAtOnceAndWheneverItChanges) {
  Page page(Connect());
  EXPECT_EQ(page.Read()["room"]["faces"][0]["paused"], false);
  bench_.clock.Do(SessionCommand::Pause);
  EXPECT_EQ(page.Read()["room"]["faces"][0]["paused"], true);
  EXPECT_EQ(server_->ViewerCount(), 1U);
  uptime_ = 1234.5;
  page.Write("time 17.25");
  const json answer = page.Read();
  EXPECT_EQ(answer["asked"], 17.25);
  EXPECT_EQ(answer["now"], 1234.5);
}

// What a page has no business to send is passed over, or ends its connection; never that of others.
TEST_F(WebServerTest, StrangeMessagesHurtNobody) {
  Page good(Connect());
  good.Read();
  {
    Page page(Connect());
    page.Read();
    for (const char* text : {"", "time", "time x", "time 1 2", "{\"round\":2}", "time 1e999",
                             "time nan", "time inf", "time -infinity"}) {
      page.Write(text);
    }
    page.Write("time 5");
    EXPECT_EQ(page.Read()["asked"], 5);
    page.Write(std::string(400, 'x'));
    EXPECT_TRUE(page.Closed());
  }
  Page hasty(Connect());
  hasty.Read();
  try {
    for (int i = 0; i < 1000; ++i) hasty.Write("time 1");
  } catch (const std::exception&) {
  }
  EXPECT_TRUE(hasty.Closed());
  bench_.clock.Do(SessionCommand::Pause);
  EXPECT_EQ(good.Read()["room"]["faces"][0]["paused"], true);
}

TEST_F(WebServerTest, PagesOfOtherSitesAreNotLetIn) {
  for (const auto& [origin, status] :
       {std::pair("http://evil.example", 403U), {"http://127.0.0.1", 101U}, {"null", 403U}}) {
    const std::string answer = Raw(fmt::format(
        "GET /session HTTP/1.1\r\nHost: 127.0.0.1\r\nOrigin: {}\r\nConnection: Upgrade\r\n"
        "Upgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
        "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n",
        origin));
    EXPECT_TRUE(answer.starts_with(fmt::format("HTTP/1.1 {}", status))) << origin << ": " << answer;
  }
}

// A page elsewhere can have its own name lead to this computer: it gets nothing under that.
TEST_F(WebServerTest, OnlyNamesOfTheClubsOwnNetworkAreAnswered) {
  for (const auto& [host, status] : {std::pair("192.168.1.20:8080", 200U),
                                     {"club", 200U},
                                     {"club.local:8080", 200U},
                                     {"evil.example:8080", 403U},
                                     {"evil.example", 403U}}) {
    const std::string answer = Raw(fmt::format("GET /state HTTP/1.1\r\nHost: {}\r\n\r\n", host));
    EXPECT_TRUE(answer.starts_with(fmt::format("HTTP/1.1 {}", status))) << host << ": " << answer;
  }
}

TEST_F(WebServerTest, BadRequestsAreRefused) {
  const std::string get = "GET / HTTP/1.1\r\nHost: x\r\n";
  struct Row {
    std::string bytes;
    const char* begins;
  };
  const Row rows[] = {
      {"\r\n\r\n", ""},
      {"\x16\x03\x01\x02", ""},
      {"GARBAGE\r\n\r\n", "HTTP/1.1 400"},
      {"GET / HTTP/9.9\r\n\r\n", "HTTP/1.1 400"},
      {get + std::string(20000, 'a') + "\r\n\r\n", "HTTP/1.1 4"},
      {get + "Content-Length: 99999999\r\n\r\n", "HTTP/1.1 413"},
      {get + "Content-Length: -1\r\n\r\n", "HTTP/1.1 400"},
      {get + "Transfer-Encoding: chunked\r\n\r\nFFFFFFFFFF\r\n", "HTTP/1.1 4"},
      {get + "\r\n" + get + "\r\n", "HTTP/1.1 200"},
  };
  for (const Row& row : rows) {
    const std::string answer = Raw(row.bytes);
    EXPECT_TRUE(answer.starts_with(row.begins)) << row.bytes.substr(0, 60) << " -> " << answer;
  }
  EXPECT_EQ(Get("/").result_int(), 200U);
}

// Bytes by chance, and requests changed by chance.
TEST_F(WebServerTest, TwoThousandHostileRequestsLeaveItServing) {
  std::mt19937 random(1);
  const std::string seed =
      "GET /session HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
      "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n"
      "\x81\x86\x01\x02\x03\x04xyzabc";
  for (int attack = 0; attack < 2000; ++attack) {
    std::string bytes = seed;
    for (auto changes = random() % 6; changes > 0; --changes) {
      const size_t place = random() % bytes.size();
      switch (random() % 4) {
        case 0:
          bytes[place] = static_cast<char>(random());
          break;
        case 1:
          bytes.erase(place, random() % 20);
          break;
        case 2:
          bytes.insert(place, std::string(random() % 300, static_cast<char>(random())));
          break;
        default:
          bytes.insert(place, bytes.substr(random() % bytes.size(), random() % 40));
      }
      if (bytes.empty()) bytes = "x";
    }
    Raw(bytes);
  }
  EXPECT_EQ(Get("/state").result_int(), 200U);
}

class SmallWebServerTest : public WebServerTest {
 protected:
  SmallWebServerTest() : WebServerTest({3, 5}) {}
};

class GreedyVisitorTest : public WebServerTest {
 protected:
  GreedyVisitorTest() : WebServerTest({10, 10, 2, 3}) {}
};

TEST_F(GreedyVisitorTest, OneAddressDoesNotTakeAllPlaces) {
  Page one(Connect());
  Page two(Connect());
  one.Read();
  two.Read();
  EXPECT_THROW(Page(Connect()).Read(), std::exception);
  std::vector<tcp::socket> halfOpen;
  for (int i = 0; i < 3; ++i) halfOpen.push_back(Connect());
  EXPECT_EQ(Raw("GET / HTTP/1.1\r\nHost: x\r\n\r\n"), "");
}

TEST_F(SmallWebServerTest, TooManyAreTurnedAwayAndRoomIsMadeAgain) {
  std::vector<std::unique_ptr<Page>> pages;
  for (int i = 0; i < 3; ++i) {
    pages.push_back(std::make_unique<Page>(Connect()));
    pages.back()->Read();
  }
  EXPECT_THROW(Page(Connect()).Read(), std::exception);
  {
    std::vector<tcp::socket> halfOpen;
    for (int i = 0; i < 5; ++i) halfOpen.push_back(Connect());
    EXPECT_EQ(Raw("GET / HTTP/1.1\r\nHost: x\r\n\r\n"), "");
    // Whoever is in is served all the same.
    bench_.clock.Do(SessionCommand::Pause);
    EXPECT_EQ(pages[0]->Read()["room"]["faces"][0]["paused"], true);
  }
  pages.clear();
  for (int i = 0; i < 50 && server_->ViewerCount() > 0; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  EXPECT_EQ(Get("/").result_int(), 200U);
  EXPECT_FALSE(Page(Connect()).Read().empty());
}

TEST(WebServerLimitsTest, TheProgramKeepsFilesForItself) {
  struct Row {
    size_t openFiles;
    size_t viewers;
    size_t visitors;
  };
  for (const Row& row : {Row{1'000'000, 1500, 100}, {1024, 524, 100}, {256, 0, 32}, {0, 0, 0}}) {
    const auto limits = WebServer::Limits::Within(row.openFiles);
    EXPECT_EQ(limits.viewers, row.viewers) << row.openFiles;
    EXPECT_EQ(limits.visitors, row.visitors) << row.openFiles;
  }
}

TEST_F(SmallWebServerTest, APortThatIsTakenOrAnAddressOfNobodyIsToldOf) {
  EXPECT_FALSE(WebServer::Listen("127.0.0.1", server_->Port(), kNoParts, {}));
  EXPECT_FALSE(WebServer::Listen("203.0.113.7", 0, kNoParts, {}));
  EXPECT_FALSE(WebServer::Listen("the room", 0, kNoParts, {}));
}

}  // namespace
}  // namespace corvanel
