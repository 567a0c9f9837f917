#include "scoring/scoring_desk.h"

#include <gtest/gtest.h>

#include "tests/support/scoring_bench.h"

namespace corvanel {
namespace {

class FakeTimer : public TickTimer {
 public:
  void Arm(double seconds) override { due = seconds; }
  void Disarm() override { due.reset(); }
  std::optional<double> due;  // seconds from when it was armed
};

/// The desk of the program, on files in memory.
class ScoringDeskTest : public testing::Test {
 protected:
  ScoringDeskTest() { bench.Write(Mitchell(8, 7, 3)); }
  void Reopen() { desk.Reopen({ScoringBench::kFile, {1}, "", {}}); }

  ScoringBench bench;
  FakeTimer timer;
  double toTick = -1;
  ScoringDesk desk{
      {.link = {.session = bench.session,
                .table = bench.base.table,
                .database = bench.database,
                .clock = bench.clocks.clock,
                .listener = bench.clocks.broadcast,
                .prompts = bench.base.prompts,
                .errors = bench.clocks.errors,
                .time = bench.clocks.time,
                .log = bench.activity,
                .notices = bench.notices,
                .version = "1.2.03",
                .chooseSections = [](const auto& /*name*/,
                                     const auto& /*lines*/) { return std::vector<bool>(); },
                .opened = [](auto /*start*/) {}},
       .clock = bench.clocks.clock,
       .sounds = bench.clocks,
       .timerBWS = timer,
       .secondsToTick = [this] { return toTick; }}};
};

TEST_F(ScoringDeskTest, PollsWhileAFileIsOpenAndNeverJustBeforeATick) {
  desk.Poll();
  Reopen();
  EXPECT_EQ(timer.due, kPollSeconds);
  timer.due.reset();
  toTick = 0.1;
  int reads = bench.database.reads;
  bench.clocks.clock.Start(1);
  desk.Poll();
  EXPECT_EQ(bench.database.reads, reads);
  ASSERT_TRUE(timer.due);
  EXPECT_NEAR(*timer.due, 0.12, 1e-9);
  toTick = 0.9;
  desk.Poll();
  EXPECT_EQ(bench.database.reads, reads + 1);
  EXPECT_EQ(timer.due, kPollSeconds);
  desk.Happened(EventKind::Move, "");
  EXPECT_EQ(timer.due, kPollSeconds);
  desk.Happened(EventKind::Round, "");  // a new round shows its tables at once
  EXPECT_EQ(timer.due, 0);
  desk.mnuCloseFile_Click();
  EXPECT_FALSE(timer.due);
  desk.Happened(EventKind::Round, "");
  EXPECT_FALSE(timer.due);
}

TEST_F(ScoringDeskTest, OneFailedLookIsNoProblemTwoAre) {
  Reopen();
  bench.database.unreadable = true;
  desk.CheckFile();
  EXPECT_EQ(desk.Problem(), "");
  desk.CheckFile();
  EXPECT_EQ(desk.Problem(), "the file /scoring/tonight.bws cannot be read");
  bench.database.unreadable = false;
  desk.CheckFile();
  EXPECT_EQ(desk.Problem(), "");
}

TEST_F(ScoringDeskTest, AnotherFileHasNoProblemYet) {
  Reopen();
  bench.database.unreadable = true;
  for (int i = 0; i < 2; ++i) desk.CheckFile();
  ASSERT_NE(desk.Problem(), "");
  desk.mnuCloseFile_Click();
  EXPECT_EQ(desk.Problem(), "");
}

TEST_F(ScoringDeskTest, NewOptionsCountAtOnce) {
  Reopen();
  bench.clocks.clock.Start(1);
  const int reads = bench.database.reads;
  bench.session.options.TableTopUnit = "BridgeTab";
  desk.OptionsChanged();
  EXPECT_EQ(bench.unitCaption, "BridgeTab");
  EXPECT_EQ(bench.database.reads, reads + 1);
}

}  // namespace
}  // namespace corvanel
