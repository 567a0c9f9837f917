// Runs the real clock on the real timer and tells how evenly the shown seconds step.
// Usage: corvanel-even-seconds [SECONDS]; start busy loops beside it to see it under load.

#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "clock/round_clock.h"
#include "system/qt/qt_tick_timer.h"
#include "system/system_time.h"

namespace corvanel {
namespace {

class Observer : public SessionListener, public SoundPlayer, public ErrorTrap {
 public:
  void ShowFace(const ClockFace& face) override {
    const long shown = std::lround(face.secondsLeft);
    if (last_ >= 0) {
      skipped += std::max(last_ - shown - 1, 0L);
      doubled += shown == last_ ? 1 : 0;
    }
    last_ = shown;
    latest = std::max(latest, std::ceil(face.secondsLeft) - face.secondsLeft);
    if (face.phase != Phase::Round) QCoreApplication::quit();
  }
  void Play(const std::string& /*file*/) override {}
  void Test(const std::string& /*file*/) override {}
  void StopTest() override {}
  SoundFitness Fitness(const std::string& /*file*/) const override { return SoundFitness::Fine; }
  void ReportError(std::string_view /*place*/, const RuntimeError& error, int /*line*/) override {
    std::fprintf(stderr, "%s\n", error.what());
  }

  long skipped = 0;
  long doubled = 0;
  double latest = 0;  // seconds after the whole second of the latest tick

 private:
  long last_ = -1;
};

}  // namespace
}  // namespace corvanel

int main(int argc, char** argv) {
  using namespace corvanel;
  QCoreApplication app(argc, argv);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
  Session session;
  session.settings.MinPerRound = static_cast<float>(seconds / 60.0);
  SystemTime time;
  Observer observer;
  RoundClock* running = nullptr;
  QtTickTimer timer([&] { running->Tick(); }, [] {});
  RoundClock clock({session, time, timer, observer, observer, observer});
  running = &clock;
  clock.Start(1);
  QCoreApplication::exec();
  std::printf("%d seconds: %ld skipped, %ld shown twice, latest tick %.1f ms late\n", seconds,
              observer.skipped, observer.doubled, observer.latest * 1000);
  return 0;
}
