#pragma once

#include <optional>

#include "basics/runtime_error.h"
#include "clock/round_clock.h"
#include "scoring/activity_log.h"
#include "scoring/progress.h"
#include "session/notices.h"
#include "session/progress_face.h"

namespace corvanel {

/// Seconds between two polls of the scoring database.
constexpr int kPollSeconds = 5;

/// Follows the tables while a scoring database is open: shows who is still playing, pauses the
/// clock for too many late tables, lets it go again, and ends a round that every table has
/// finished. In doubt the clock runs as if there were no link.
class ProgressMonitor : public SessionListener {
 public:
  struct Parts {
    const Session& session;
    FollowedScoring& link;
    RoundClock& clock;
    SessionListener& listener;
    SoundPlayer& sounds;
    const TimeSource& time;
    ActivityLog& log;
    ErrorTrap& errors;
    Notices& notices;
  };
  explicit ProgressMonitor(const Parts& parts) : parts_(parts) {}

  /// One poll: reads the database, and acts on what it says. A read that fails is passed over.
  void TimerBWS_Timer();
  /// The director starts a session.
  void SessionStarts();
  /// The table whose line says that it sends nothing; nothing when there is no such line.
  std::optional<TableId> SilentTable(const std::string& label) const;
  /// The clock did something, by whatever hand.
  void Happened(EventKind kind, const std::string& text) override;
  /// The scoring file was closed, or another one opened: a clock that the monitor paused goes on.
  void FileChanged();

 private:
  ProgressInput Input() const;
  void OmitWarnings();
  void Follow();
  void PauseOrResume(const RoundProgress& progress);
  bool MayPause(const RoundProgress& progress) const;
  void LetGo();
  void Polled(bool read);
  void EndRoundWhenFinished(const RoundProgress& progress);
  void EndRound();
  bool MayEndRound(const RoundProgress& progress) const;
  void BeginRound();
  bool AllFinished() const;
  void TellSilent(const RoundProgress& progress);
  void Show(const RoundProgress& progress);
  std::string Info(const RoundProgress& progress) const;
  double Age() const;

  Parts parts_;
  const Session& session_ = parts_.session;
  bool sawFinished_ = false;        // at the last look, which nobody could confirm yet
  bool waitForPlaying_ = false;     // a round is not ended before a table was seen playing it
  int16_t round_ = 0;               // that began last
  std::optional<double> lastGood_;  // uptime at the last good picture
  ProgressFace face_;
  std::map<std::string, TableId> silent_;  // that a line tells of
};

}  // namespace corvanel
