#include "network/network_desk.h"

#include <gtest/gtest.h>

#include "tests/support/network_bench.h"

namespace corvanel {
namespace {

class NetworkDeskTest : public testing::Test {
 protected:
  /// A port that is free now.
  static int FreePort() {
    const auto server = WebServer::Listen("127.0.0.1", 0, kNoParts, {});
    return server.Value()->Port();
  }
  void Apply(bool on, int port) {
    bench_.session.options.NetworkOn = on;
    bench_.session.options.NetworkPort = port;
    desk_.Apply();
  }
  static bool Taken(int port) {
    return !WebServer::Listen("0.0.0.0", static_cast<uint16_t>(port), kNoParts, {});
  }

  ClockBench bench_;
  Notices notices_{bench_.broadcast};
  NetworkBench network_{bench_, notices_};
  NetworkDesk& desk_ = network_.desk;
};

TEST_F(NetworkDeskTest, ListensWhenItIsWantedAndNeverElse) {
  const int port = FreePort();
  Apply(false, port);
  EXPECT_FALSE(desk_.Serves());
  EXPECT_FALSE(Taken(port));
  Apply(true, port);
  EXPECT_TRUE(desk_.Serves());
  EXPECT_TRUE(Taken(port));
  const int other = FreePort();
  Apply(true, other);
  EXPECT_FALSE(Taken(port));
  EXPECT_TRUE(Taken(other));
  Apply(false, other);
  EXPECT_FALSE(Taken(other));
  EXPECT_TRUE(bench_.notices.empty());
}

TEST_F(NetworkDeskTest, APortThatIsTakenStandsInALineUntilItIsMended) {
  auto server = WebServer::Listen("0.0.0.0", 0, kNoParts, {});
  const int port = server.Value()->Port();
  Apply(true, port);
  EXPECT_FALSE(desk_.Serves());
  ASSERT_EQ(bench_.notices.size(), 1U);
  EXPECT_EQ(bench_.notices[0].kind, NoticeKind::Network);
  EXPECT_NE(bench_.notices[0].text.find(std::to_string(port)), std::string::npos);
  server.Value().reset();
  Apply(true, port);
  EXPECT_TRUE(desk_.Serves());
  EXPECT_TRUE(bench_.notices.empty());
}

}  // namespace
}  // namespace corvanel
