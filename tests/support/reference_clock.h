#pragma once

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "clock/undo_list.h"

namespace corvanel {

/// A second round clock to hold the real one against, made another way: it counts down what is
/// left, and knows no marks, no counter and no midnight.
class ReferenceClock {
 public:
  explicit ReferenceClock(SessionSettings settings) : settings_(std::move(settings)) {}

  /// Lets the session go on to `now`, in seconds that never start again. What lies more than half
  /// a minute back is not heard.
  void AdvanceTo(double now);

  void Start();
  void Pause();
  void Resume();
  /// A pause ends that nobody commanded to end.
  void GoesOnByItself() { state_.paused = false; }
  void NextRound();
  void Restart();
  void ChangeMinutes(int minutes);
  void EndRound();
  void Undo();
  /// Takes out `seconds` before which the clock was last looked at, at `before`.
  void TakeOut(double seconds);
  /// The program was away since it was last looked at, and goes on from there.
  void GoOnFromWhereItStopped(double now);
  /// A later run of the program does not know what the one before it played.
  void ForgetWhatWasHeard() { heard_.clear(); }
  /// The scoring link has the warnings of the round omitted.
  void OmitWarnings() { state_.warned = {true, true}; }

  Phase phase() const { return state_.phase; }
  bool Running() const {
    return state_.phase == Phase::Round || state_.phase == Phase::Move ||
           state_.phase == Phase::Break;
  }
  /// Whether the count-down ran when it was last looked at, before AdvanceTo.
  bool WasRunning() const {
    return !before_.paused && before_.phase != Phase::Idle && before_.phase != Phase::Ended;
  }
  bool paused() const { return state_.paused; }
  int round() const { return state_.round; }
  double left() const { return state_.left; }

  bool omitsWarnings = false;     // of every round that begins
  std::vector<std::string> cues;  // that must have been played

 private:
  struct State {
    Phase phase = Phase::Idle;
    int round = 1;
    double left = 0;
    bool paused = false;
    std::array<bool, kWarnings> warned = {true, true};
    std::array<bool, kWarnings> given = {};
  };
  struct Snapshot {
    State state;
    double at = 0;    // when the command was given
    double from = 0;  // from when on time passes for the state
  };

  double Limit(size_t warning) const;
  void Remember();
  void Run(double seconds, double heardFrom);
  void Happen(double late, double heardFrom);
  void BeginRound();
  void BeginMove(double late, double heardFrom);
  void GoToNextRound();
  void Play(Cue cue, double late, double heardFrom);

  const SessionSettings settings_;
  State state_;
  State before_;  // as it was when it was last looked at
  double beforeAt_ = 0;
  double now_ = 0;
  std::vector<Snapshot> snapshots_;
  std::map<Cue, double> heard_;
};

}  // namespace corvanel
