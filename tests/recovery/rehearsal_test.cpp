// Thirty club evenings in virtual time, each with other faults: a computer that sleeps or is busy,
// a clock that is set, a disk that is full, scoring files that vanish or are torn, keys pressed by
// the dozen, screens that go, a program that is killed. After everything that happens the session
// is held against a second clock that is made another way.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "clock/round_clock.h"
#include "display/screen_plan.h"
#include "tests/support/program_run.h"
#include "tests/support/reference_clock.h"

namespace corvanel {
namespace {

constexpr const char* kPauseSound = "pause";
constexpr int kTables = 6;
constexpr int kBoards = 3;

class RehearsalTest : public testing::TestWithParam<unsigned> {
 protected:
  RehearsalTest() { StartProgram(); }

  double Number(double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(chance);
  }
  int Whole(int from, int to) { return std::uniform_int_distribution<int>(from, to)(chance); }
  bool Now(double likely) { return Number(0, 1) < likely; }

  RoundClock& Clock() { return run->bench.clocks.clock; }
  ClockBench& Bench() { return run->bench.clocks; }
  SessionSettings& Settings() { return run->session().settings; }

  void StartProgram() {
    auto next = std::make_unique<ProgramRun>(keeper, start, "one");
    next->bench.clocks.time.PassTo(now);
    next->bench.clocks.time.SetClock(clockSet);
    if (run) next->bench.session = run->bench.session;
    run = std::move(next);
  }

  void Shape() {
    SessionSettings& s = Settings();
    s.nRounds = static_cast<int16_t>(Whole(3, 9));
    s.MinPerRound = static_cast<float>(Whole(10, 40)) / 2;
    s.MinBetweenRounds = static_cast<float>(Whole(1, 20)) / 10;
    s.MinWarning = static_cast<float>(Whole(0, 4));
    s.MinWarning1 = static_cast<float>(Whole(0, 9));
    s.optBreak = Now(0.6);
    s.BreakAfterRound = static_cast<int16_t>(Whole(1, 6));
    s.TimeForBreak = static_cast<float>(Whole(1, 15));
    s.MoveAfterBreak = Now(0.5);
    s.Skip = Now(0.3) ? "2" : "";
    s.Arrow = Now(0.3) ? "2,4" : "";
    s.sounds.files = {"warning0", "warning1", "end", "break", "skip", "arrow", "endbreak"};
    Options& options = run->session().options;
    options.BMOmitwarning1 = options.BMOmitwarning2 = followed && Now(0.5);
    options.BMPauseSound = kPauseSound;
    options.BMUpdateSettings = false;
  }

  /// Everything that must hold after whatever happened.
  void Check(const std::string& what) {
    run->recorder.ShowFace({});
    const std::string where = what + " at " + std::to_string(now);
    const ClockState& state = Clock().State();
    ASSERT_GE(state.round, 1) << where;
    ASSERT_LE(state.round, Settings().nRounds) << where;
    ASSERT_EQ(state.phase, reference->phase()) << where;
    ASSERT_EQ(state.paused, reference->paused()) << where;
    ASSERT_EQ(state.round, reference->round()) << where;
    if (reference->Running()) {
      // No jump that the reference does not make too, and marks that agree with what is shown.
      const double left = Clock().Now().secondsLeft;
      ASSERT_NEAR(left, reference->left(), 1e-3) << where;
      ASSERT_EQ(Bench().face.countdown, MinutesAndSeconds(ShownSeconds(left, 1))) << where;
      ASSERT_TRUE(Bench().time.Due()) << where;
    }
    std::erase(Bench().played, kPauseSound);
    ASSERT_EQ(Bench().played, reference->cues) << where;
    Bench().played.clear();
    reference->cues.clear();
    ASSERT_EQ(run->bench.clocks.errors.reports, std::vector<std::string>()) << where;
    if (keeper.broken.empty() && keeper.Failure().empty()) {
      const auto record = ReadRecord(keeper.texts.front());
      ASSERT_TRUE(record) << where;
      ASSERT_EQ(record.Value().state, Clock().State()) << where;
    }
  }

  void PassTo(double moment) {
    now = moment;
    Bench().time.PassTo(now);
    reference->AdvanceTo(now);
  }

  void Tick() {
    Bench().time.Disarm();
    Clock().Tick();
    Check("tick");
  }

  /// The clock's own wake-up, a little late on a busy machine.
  void NextTick() {
    const double due = Bench().time.Due().value_or(now + 1);
    PassTo(due + (Now(0.1) ? Number(0, 0.4) : 0.001));
    Tick();
  }

  void Press(char key) {
    switch (key) {
      case 'P':
        Clock().Do(Clock().State().paused ? SessionCommand::Resume : SessionCommand::Pause);
        reference->paused() ? reference->Resume() : reference->Pause();
        break;
      case 'N':
        Clock().Do(SessionCommand::NextRound);
        reference->NextRound();
        break;
      case 'R':
        Clock().Do(SessionCommand::Restart);
        reference->Restart();
        break;
      case '+':
      case '-':
        Clock().Do(key == '+' ? SessionCommand::AddMinute : SessionCommand::SubtractMinute);
        reference->ChangeMinutes(key == '+' ? 1 : -1);
        break;
      default:
        Clock().Do(SessionCommand::Undo);
        reference->Undo();
    }
    Check(std::string("key ") + key);
  }

  void KeyStorm() {
    const std::string keys = "PNR+-UUU";
    for (int i = Whole(1, 12); i > 0 && !HasFatalFailure(); --i) {
      PassTo(now + Number(0, 0.8));
      Press(keys[static_cast<size_t>(Whole(0, static_cast<int>(keys.size()) - 1))]);
    }
    // Most of it was a slip: the evening should still come to its end.
    for (int i = Whole(0, 12); i > 0 && !HasFatalFailure(); --i) Press('U');
  }

  void Sleep() {
    const double due = Bench().time.Due().value_or(now);
    const double length = Now(0.8) ? Number(1, 300) : Number(300, 3000);
    PassTo(due + length);
    Tick();
    if (HasFatalFailure()) return;
    const bool offered = Bench().face.awayCanBeTakenOut;
    ASSERT_EQ(offered, reference->WasRunning() && length > 30);
    if (!offered) return;
    EXPECT_NEAR(Bench().face.away, length, 1e-3);
    if (Now(0.4)) {
      Clock().Do(SessionCommand::TakeOutGap);
      reference->TakeOut(length);
      Check("taken out");
    } else {
      Clock().Do(SessionCommand::LeaveGapIn);
    }
  }

  void SetClock() {
    const double by = Now(0.5) ? 3600 * Whole(-3, 3) : Number(-5, 5);
    clockSet += by;
    Bench().time.SetClock(by);
    Check("clock set");
  }

  /// The program is killed and started again.
  void Kill() {
    if (!keeper.broken.empty() || !keeper.Failure().empty()) return;
    if (!reference->Running()) return;
    const double dead = now + (Now(0.7) ? Number(0.1, 20) : Number(20, 700));
    now = dead;
    StartProgram();
    const bool fromWhereItStopped = Now(0.5);
    run->bench.base.prompts.choice = fromWhereItStopped ? 1 : 0;
    if (followed) run->bench.database.Put(ScoringBench::kFile, evening);
    reference->ForgetWhatWasHeard();
    if (fromWhereItStopped) reference->GoOnFromWhereItStopped(now);
    reference->AdvanceTo(now);
    const auto record = run->ending.Ask();
    ASSERT_TRUE(record);
    run->bench.link.Reopen(record->scoring);
    if (run->bench.link.IsOpen()) run->bench.monitor.FileChanged();
    run->ending.GoOn(*record);
    Check("killed");
  }

  void BreakOrMendDisk() {
    keeper.broken = keeper.broken.empty() ? "No space left on device" : "";
    Check("disk");
  }

  void TearOrMendScoringFile() {
    FakeDatabase& database = run->bench.database;
    database.unreadable = !database.unreadable;
    if (Now(0.3)) database.failures = Whole(1, 20);
    if (Now(0.3)) database.next = {std::make_shared<ScoringPicture>(Mitchell(kTables, 1, 1))};
  }

  /// The tables send what they have played.
  void SendResults() {
    if (Clock().State().phase != Phase::Round || Clock().State().paused) return;
    const int round = Clock().State().round;
    for (const RoundRow& row : evening.rounds) {
      int& sent = sent_[{row.Table, round}];
      if (row.round != round || sent == kBoards) continue;
      if (!Now(5 * kBoards / (Settings().MinPerRound * 60.0))) continue;
      evening.received.push_back(ResultOf(row.Table, round, row.LowBoard + sent++));
    }
    run->bench.database.Put(ScoringBench::kFile, evening);
  }

  /// The link acts through the clock: the reference is told what it decided, and why it may.
  void Poll() {
    SendResults();
    const bool wasPaused = Clock().State().paused;
    const Phase was = Clock().State().phase;
    const double left = reference->left();
    run->bench.monitor.TimerBWS_Timer();
    const ClockState& state = Clock().State();
    const Options& options = run->session().options;
    if (was == Phase::Round && options.BMOmitwarning1) reference->OmitWarnings();
    if (!wasPaused && state.autoPaused) {
      EXPECT_LE(left, std::max(options.BMPauseMinutes * 60.0, 0.0) + 1e-3);
      reference->Pause();
    } else if (wasPaused && !state.paused) {
      reference->GoesOnByItself();
    } else if (was == Phase::Round && !wasPaused && state.phase != Phase::Round) {
      reference->EndRound();
    }
    Check("poll");
  }

  /// Wherever the screens are, both displays stand on them.
  void Unplug() {
    std::vector<Place> screens;
    double left = 0;
    for (int i = Whole(1, 3); i > 0; --i) {
      screens.push_back({left, 0, Number(800, 3840), Number(600, 2160)});
      left += screens.back().width;
    }
    const auto control = static_cast<size_t>(Whole(0, static_cast<int>(screens.size()) - 1));
    const ScreenPlan plan = PlanScreens(screens, control);
    for (const auto& [place, index] :
         {std::pair(plan.room, plan.roomScreen), std::pair(plan.twin, plan.twinScreen)}) {
      ASSERT_LT(index, screens.size());
      const Place& screen = screens[index];
      EXPECT_GE(place.x, screen.x);
      EXPECT_LE(place.x + place.width, screen.x + screen.width + 1);
      EXPECT_LE(place.y + place.height, screen.height + 1);
    }
    EXPECT_EQ(plan.sideBySide, screens.size() == 1);
  }

  void Fault() {
    switch (Whole(0, 7)) {
      case 0:
        Sleep();
        break;
      case 1:
        SetClock();
        break;
      case 2:
        Kill();
        break;
      case 3:
        BreakOrMendDisk();
        break;
      case 4:
        if (followed) TearOrMendScoringFile();
        break;
      case 5:
        Unplug();
        break;
      default:
        KeyStorm();
    }
  }

  std::mt19937 chance{GetParam()};
  const ClockTime start = ClockTime::At(18, 0).PlusSeconds(Number(0, 6 * 3600));
  const bool followed = Now(0.5);
  ScoringPicture evening = Mitchell(kTables, 9, kBoards);
  double now = 0;
  double clockSet = 0;
  FakeKeeper keeper;
  std::unique_ptr<ProgramRun> run;
  std::unique_ptr<ReferenceClock> reference;

 private:
  std::map<std::pair<int, int>, int> sent_;
};

TEST_P(RehearsalTest, TheEveningComesToItsRightEnd) {
  Shape();
  if (followed) run->bench.Open(evening);
  reference = std::make_unique<ReferenceClock>(Settings());
  reference->omitsWarnings = followed && run->session().options.BMOmitwarning1;
  Clock().Start(1);
  reference->Start();
  Check("start");
  int ticks = 0;
  while (reference->phase() != Phase::Ended && !HasFatalFailure()) {
    NextTick();
    if (followed && ++ticks % kPollSeconds == 0 && !HasFatalFailure()) Poll();
    if (Now(0.004) && !HasFatalFailure()) Fault();
    // A director does not leave it paused all night.
    if (reference->paused() && Now(0.02) && !HasFatalFailure()) Press('P');
    ASSERT_LT(now, 48 * 3600) << "the evening does not end";
  }
  EXPECT_EQ(Clock().State().round, Settings().nRounds);
  EXPECT_EQ(Bench().face.countdown, "0:00");
}

INSTANTIATE_TEST_SUITE_P(ThirtyEvenings, RehearsalTest, testing::Range(1U, 31U));

}  // namespace
}  // namespace corvanel
