#pragma once

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "scoring/progress_monitor.h"
#include "scoring/round_book.h"
#include "scoring/scoring_link.h"
#include "tests/support/favourites_bench.h"

namespace corvanel {

/// A session of one section in which the east-west pairs move up one table a round. `tables`
/// pairs sit north-south, numbered from 1; the others follow.
ScoringPicture Mitchell(int tables, int rounds, int boards);

/// A result of section 1, sent at `stamp`.
ResultRow ResultOf(int table, int round, int board, DateTime stamp = {});

/// Scoring files in memory, each of which can be made unreadable.
class FakeDatabase : public ScoringDatabase {
 public:
  void Read(const std::string& path, Answer answer) override { answer(ReadNow(path)); }
  Result<PicturePointer> ReadNow(const std::string& path) override;
  void GiveUp() override { ++givenUp; }
  std::vector<ScoringFile> Files(const std::string& folder) override;
  std::string RealSpelling(const std::string& folder) override { return folder; }

  /// Puts a file where it can be found.
  void Put(const std::string& path, ScoringPicture picture, DateTime modified = {});
  /// The pictures of the next reads of any file, before what the files hold.
  std::deque<PicturePointer> next;
  bool unreadable = false;
  int failures = 0;  // of the next reads
  Error failure{3343, "Unrecognized database format"};
  int reads = 0;
  int givenUp = 0;

 private:
  std::map<std::string, PicturePointer> files_;
};

/// The link and the monitor on files in memory, a log in memory and a clock in virtual time.
class ScoringBench : public LogStorage, public SessionListener {
 public:
  explicit ScoringBench(ClockTime start = ClockTime::At(19, 30), DateTime day = {},
                        const std::string& boot = "virtual");

  void OpenLog(const std::string& name) override { log.push_back("open " + name); }
  void WriteLine(const std::string& line) override { log.push_back(line); }
  void ShowScoring(const std::string& unit, const std::string& file) override {
    unitCaption = unit;
    shownFile = file;
  }
  void ShowTables(const ProgressFace& shown) override { face = shown; }
  void ShowNotices(const std::vector<Notice>& shown) override { lines = shown; }

  /// Takes over a picture as the open file's content.
  void Open(const ScoringPicture& picture);
  /// The file holds this from the next poll on.
  void Write(const ScoringPicture& picture) { database.Put(kFile, picture); }
  /// Lets time pass with a poll every few seconds, as the program does.
  void PassWithPolls(double seconds);

  static constexpr const char* kFile = "/scoring/tonight.bws";

  std::vector<std::string> log;
  std::vector<std::string> sectionLines;
  std::vector<bool> sectionAnswers;
  std::string unitCaption;
  std::string shownFile;
  ProgressFace face;
  std::vector<Notice> lines;  // for the director
  FavouritesBench base;
  ClockBench& clocks = base.bench;
  Session& session = base.session;
  FakeDatabase database;
  ActivityLog activity{session, clocks.time, *this};
  Notices notices{*this};
  ScoringLink link{{.session = session,
                    .table = base.table,
                    .database = database,
                    .clock = clocks.clock,
                    .listener = clocks.broadcast,
                    .prompts = base.prompts,
                    .errors = clocks.errors,
                    .time = clocks.time,
                    .log = activity,
                    .notices = notices,
                    .version = "1.2.03",
                    .chooseSections =
                        [this](const auto& /*name*/, const auto& lines) {
                          sectionLines = lines;
                          return sectionAnswers;
                        },
                    .opened = [this](auto start) { base.control.ScoringFileOpened(start); }}};
  RoundBook rounds{clocks.clock, clocks.time};
  ProgressMonitor monitor{{session, link, clocks.clock, clocks.broadcast, clocks, clocks.time,
                           activity, clocks.errors, notices}};
};

}  // namespace corvanel
