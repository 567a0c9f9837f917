#pragma once

#include <string>

#include "scoring/scoring_session.h"
#include "session/session.h"
#include "session/time_source.h"

namespace corvanel {

/// Where the log's lines go.
class LogStorage {
 public:
  virtual ~LogStorage() = default;
  /// Opens the file of this name in the log folder for appending, creating both where they are
  /// missing. What was open before is closed. A failure is kept silent; its lines are lost.
  virtual void OpenLog(const std::string& name) = 0;
  /// Appends a line; nothing when no file is open.
  virtual void WriteLine(const std::string& line) = 0;
};

/// Keeps what the link saw of the scoring database, a file per day. Logging never interrupts the
/// session, and writes nothing while the option is off.
class ActivityLog {
 public:
  ActivityLog(const Session& session, const TimeSource& time, LogStorage& storage)
      : session_(session), time_(time), storage_(storage) {}

  /// Opens today's file and writes its first line.
  void LogOpen(const std::string& firstLine);
  /// Writes one line, with the time before it.
  void LogWrite(const std::string& text);
  /// Writes what a routine of this name has read.
  void LogRead(const std::string& routine, const ScoringSession& read);

 private:
  const Session& session_;
  const TimeSource& time_;
  LogStorage& storage_;
};

}  // namespace corvanel
