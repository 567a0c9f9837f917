#pragma once

#include <functional>
#include <string>
#include <vector>

#include "recovery/continue_session.h"
#include "tests/support/scoring_bench.h"

namespace corvanel {

/// Records in memory.
class FakeKeeper : public RecordKeeper {
 public:
  void Keep(const std::string& text) override {
    ++writes;
    failure_ = broken;
    if (broken.empty()) texts.insert(texts.begin(), text);
    if (texts.size() > 3) texts.pop_back();
  }
  void KeepAlive(const Moment& moment) override { alive = moment; }
  std::string Failure() const override { return failure_; }
  std::vector<std::string> Kept() const override { return texts; }
  std::optional<Moment> LastAlive() const override { return alive; }
  void Forget() override { texts.clear(); }

  std::vector<std::string> texts;  // the latest first
  std::optional<Moment> alive;
  std::string broken;  // why writing fails, if it does
  int writes = 0;

 private:
  std::string failure_;
};

class FakeNotices : public SessionListener {
 public:
  void ShowNotices(const std::vector<Notice>& shown) override { notices = shown; }
  std::vector<Notice> notices;
};

/// One run of the program, which writes its session down.
struct ProgramRun {
  ProgramRun(FakeKeeper& records, ClockTime start, const std::string& boot)
      : bench(start, DateTime::Of(2026, 11, 20), boot), keeper(records) {
    bench.clocks.broadcast.Add(recorder);
  }

  void Begin() {
    SessionSettings& s = session().settings;
    s.nRounds = 4;
    s.MinPerRound = 10;
    s.optBreak = true;
    s.BreakAfterRound = 2;
    s.TimeForBreak = 5;
    bench.clocks.clock.Start(1);
  }
  void Pass(double seconds) {
    ClockBench& clocks = bench.clocks;
    const double until = clocks.time.Elapsed() + seconds;
    while (clocks.time.Due() && *clocks.time.Due() <= until) {
      clocks.time.PassToWakeUp();
      clocks.clock.Tick();
    }
    clocks.time.PassTo(until);
  }
  void Do(SessionCommand command) { bench.clocks.clock.Do(command); }
  /// What a start of the program does.
  bool Resume() {
    const auto record = ending.Ask();
    if (record) ending.GoOn(*record);
    return record.has_value();
  }
  Session& session() { return bench.session; }
  const ClockState& State() { return bench.clocks.clock.State(); }
  const ClockFace& Face() { return bench.clocks.face; }
  double Left() { return bench.clocks.clock.Now().secondsLeft; }

  ScoringBench bench;
  FakeKeeper& keeper;
  FakeNotices view;
  Notices notices{view};
  EveningSoFar& evening = bench.base.evening;
  SessionRecorder recorder{{bench.session, bench.clocks.clock, bench.link, bench.rounds, evening,
                            bench.clocks.time, keeper, notices}};
  ContinueSession ending{{bench.session, bench.clocks.clock, evening, bench.clocks.time, keeper,
                          bench.base.prompts, notices}};
};

}  // namespace corvanel
