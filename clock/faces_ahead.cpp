#include "clock/faces_ahead.h"

#include <utility>

#include "clock/round_clock.h"
#include "clock/virtual_time.h"

namespace corvanel {
namespace {

constexpr double kJustAfter = 1e-6;  // seconds

/// Takes what the clock shows and plays, and hands it to nobody.
class Witness : public SessionListener, public SoundPlayer, public ErrorTrap {
 public:
  void ShowFace(const ClockFace& shown) override { face = shown; }
  void Play(const std::string& file) override { sounds.push_back(file); }
  void Test(const std::string& /*file*/) override {}
  void StopTest() override {}
  SoundFitness Fitness(const std::string& /*file*/) const override { return SoundFitness::Fine; }
  void ReportError(std::string_view /*place*/, const RuntimeError& error, int /*line*/) override {
    throw error;
  }

  ClockFace face;
  std::vector<std::string> sounds;
};

}  // namespace

std::vector<FaceAhead> FacesAhead(const Session& session, const ClockState& state,
                                  const TimeSource& time, size_t most) {
  const double now = time.Uptime();
  VirtualTime ahead(time.TimeOfDay());
  Witness witness;
  RoundClock clock({session, ahead, ahead, witness, witness, witness});
  clock.Continue(state.Shifted(-now), {});
  std::vector<FaceAhead> faces;
  const auto take = [&](double from) {
    const ClockState& s = clock.State();
    const bool counts = Runs(s.phase) && !s.paused;
    faces.push_back({now + from, counts ? now + s.EndMark() : 0, witness.face,
                     std::exchange(witness.sounds, {})});
    return counts;
  };
  for (double from = 0; take(from) && faces.size() < most;) {
    from = clock.NextMoment();
    ahead.PassTo(from + kJustAfter);
    clock.WasHeld();
    clock.Tick();
  }
  return faces;
}

}  // namespace corvanel
