#pragma once

#include <optional>
#include <string>
#include <vector>

#include "clock/round_clock.h"
#include "recovery/session_record.h"
#include "scoring/scoring_link.h"
#include "session/notices.h"

namespace corvanel {

/// Where records of the session are kept over the end of the program.
class RecordKeeper {
 public:
  virtual ~RecordKeeper() = default;
  /// Has the text written, durably and at once, and does not wait for it. A text that has not
  /// been written when the next one comes is left out.
  virtual void Keep(const std::string& text) = 0;
  /// The session still runs: keeps the moment, overwriting the one before it. Need not survive a
  /// power cut.
  virtual void KeepAlive(const Moment& moment) = 0;
  /// Why the latest text is not on the disk; empty when it is, or is still on its way.
  virtual std::string Failure() const = 0;
  /// The texts of an earlier run, the latest first.
  virtual std::vector<std::string> Kept() const = 0;
  /// The last moment at which that run was alive, if it is known.
  virtual std::optional<Moment> LastAlive() const = 0;
  /// There is nothing to go on with: no text is kept any more when it returns, except on a disk
  /// that does not respond.
  virtual void Forget() = 0;
};

/// Writes a running session down whenever anything about it changes.
class SessionRecorder : public SessionListener {
 public:
  struct Parts {
    const Session& session;
    const RoundClock& clock;
    const ScoringLink& link;
    const RoundBook& rounds;
    const EveningSoFar& evening;
    const TimeSource& time;
    RecordKeeper& keeper;
    Notices& notices;
  };
  explicit SessionRecorder(const Parts& parts) : parts_(parts) {}

  /// After everything that the clock does, and at least once a second while it runs.
  void ShowFace(const ClockFace& face) override;
  /// The program ends: a session that is under way can be continued, any other is forgotten.
  /// Nothing is written any more.
  void Close();

 private:
  bool NothingNew() const;
  void Write(const Moment& now);

  Parts parts_;
  std::optional<SessionRecord> written_;
  bool closed_ = false;
};

}  // namespace corvanel
