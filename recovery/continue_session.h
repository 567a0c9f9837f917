#pragma once

#include <optional>

#include "recovery/session_recorder.h"
#include "session/prompts.h"

namespace corvanel {

/// A session that an earlier run of the program left behind without ending properly, and how it is
/// gone on with.
class ContinueSession {
 public:
  struct Parts {
    Session& session;
    RoundClock& clock;
    EveningSoFar& evening;
    const TimeSource& time;
    RecordKeeper& keeper;
    Prompts& prompts;
    Notices& notices;
  };
  explicit ContinueSession(const Parts& parts) : parts_(parts) {}

  /// Whether there is such a session to be asked about.
  bool Waits();

  /// Looks for such a session and asks the director about it. Returns its record when it is to be
  /// gone on with. Nothing is asked when there is none or its evening is long over; nor when its
  /// record is damaged, which a line reports.
  std::optional<SessionRecord> Ask();

  /// Puts settings and clock where the director wanted the session of the record to go on.
  void GoOn(const SessionRecord& record);

 private:
  std::optional<SessionRecord> Latest();
  std::optional<SessionRecord> Unfinished();
  bool LongOver(const SessionRecord& record) const;
  std::string Question(const SessionRecord& record) const;

  Parts parts_;
  Moment stopped_;  // when the earlier run was last known to be alive
  bool fromWhereItStopped_ = false;
};

}  // namespace corvanel
