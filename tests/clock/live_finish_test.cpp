#include <gtest/gtest.h>

#include <random>

#include "basics/times.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

/// A session of random shape whose break, if any, lies before the last round.
SessionSettings RandomShape(std::mt19937& random) {
  const auto upTo = [&](int most) {
    return static_cast<int>(random() % (static_cast<unsigned>(most) + 1));
  };
  SessionSettings s;
  s.nRounds = static_cast<int16_t>(1 + upTo(6));
  s.MinPerRound = static_cast<float>(1 + upTo(60)) / 10;
  s.MinBetweenRounds = static_cast<float>(1 + upTo(20)) / 10;
  s.MinWarning = static_cast<float>(upTo(80)) / 10;
  s.MinWarning1 = static_cast<float>(upTo(80)) / 10;
  s.optBreak = s.nRounds > 1 && upTo(2) > 0;
  s.BreakAfterRound = static_cast<int16_t>(1 + upTo(std::max(s.nRounds - 2, 0)));
  s.TimeForBreak = static_cast<float>(upTo(50)) / 10;
  s.MoveAfterBreak = upTo(1) == 1;
  return s;
}

struct Sighting {
  double at;
  double pausedSoFar;
  std::string finish;
};

// What "Finish at" says at any moment is the moment at which the session ends, pauses still to
// come apart.
TEST(LiveFinishTest, TellsTheTruthAtEverySecond) {
  std::mt19937 random(20261121);
  for (int session = 0; session < 150; ++session) {
    ClockBench bench(ClockTime(static_cast<double>(random() % 86400U)));
    bench.session.settings = RandomShape(random);
    const auto round =
        static_cast<int16_t>(1 + random() % static_cast<unsigned>(bench.session.settings.nRounds));
    std::vector<Sighting> sightings;
    double paused = 0;
    bench.clock.Start(round);
    while (bench.clock.State().phase != Phase::Ended) {
      sightings.push_back({bench.time.Elapsed(), paused, bench.face.finish});
      if (random() % 200 == 0) {
        bench.clock.Do(SessionCommand::Pause);
        for (unsigned long i = random() % 90; i > 0; --i) {
          bench.Pass(1);
          paused += 1;
          sightings.push_back({bench.time.Elapsed(), paused, bench.face.finish});
        }
        bench.clock.Do(SessionCommand::Resume);
      }
      bench.Pass(1);
    }
    const ClockTime end = bench.time.TimeOfDay();
    for (const Sighting& seen : sightings) {
      const ClockTime then = end.PlusSeconds(seen.pausedSoFar - paused);
      // The session is found ended up to a second after its end.
      const bool same =
          seen.finish == "Finish at " + TimeText(ToNearestMinute(then)) ||
          seen.finish == "Finish at " + TimeText(ToNearestMinute(then.PlusSeconds(-1)));
      ASSERT_TRUE(same) << "session " << session << ", second " << seen.at << ": " << seen.finish
                        << ", ended " << TimeTextWithSeconds(end);
    }
  }
}

}  // namespace
}  // namespace corvanel
