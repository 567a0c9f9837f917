#pragma once

#include <string>

#include "console/arguments.h"
#include "scoring/activity_log.h"
#include "scoring/scoring_session.h"
#include "session/session.h"
#include "session/time_source.h"

namespace corvanel {

/// The picture of a scoring file. Throws UsageError when it cannot be used.
PicturePointer ReadScoring(const std::string& file);

/// Prints what a scoring file says, and how far the tables were in a round.
void PrintScoring(const ConsoleArguments& arguments);

/// A scoring file whose results appear one by one, at the times at which they were sent, moved so
/// that its session starts with the one that runs.
class Replay : public FollowedScoring {
 public:
  /// `session` has its start time.
  Replay(PicturePointer picture, const Session& session, const TimeSource& time);

  bool IsOpen() const override { return true; }
  void BWSReadFile(std::function<void(bool read)> done) override;
  const ScoringSession& Model() const override { return model_; }
  bool IsTonights() const override { return true; }
  std::set<TableId> LeftOut() const override { return {}; }

 private:
  void ShowUpTo(int64_t now);

  PicturePointer whole_;
  std::vector<ResultRow> results_;  // in order of their times
  int64_t origin_;                  // seconds, of the file's times, at which its session starts
  int64_t start_;                   // seconds, of the running clock, at which that session starts
  const TimeSource& time_;
  size_t shown_ = 0;
  ScoringSession model_;
};

/// A rehearsal leaves no log.
class NoLog : public LogStorage {
 public:
  void OpenLog(const std::string& /*name*/) override {}
  void WriteLine(const std::string& /*line*/) override {}
};

}  // namespace corvanel
