#include "tests/support/scoring_bench.h"

namespace corvanel {

ScoringPicture Mitchell(int tables, int rounds, int boards) {
  ScoringPicture picture;
  picture.unit = "Bridgemate";
  picture.format = "Jet4";
  picture.sessionName = "Test pairs";
  picture.sessionDate = DateTime::Of(2026, 11, 20, ClockTime::At(19, 30));
  picture.sections = {{1, "A", static_cast<int16_t>(tables), 0, 0}};
  for (int round = 1; round <= rounds; ++round) {
    for (int table = 1; table <= tables; ++table) {
      const int ew = tables + 1 + (table - round + tables * rounds) % tables;
      const int low = (table + round - 2) % tables * boards + 1;
      picture.rounds.push_back({1, static_cast<int16_t>(table), static_cast<int16_t>(round),
                                static_cast<int16_t>(table), static_cast<int16_t>(ew),
                                static_cast<int16_t>(low), static_cast<int16_t>(low + boards - 1),
                                ""});
    }
  }
  return picture;
}

ResultRow ResultOf(int table, int round, int board, DateTime stamp) {
  ResultRow row;
  row.Section = 1;
  row.Table = static_cast<int16_t>(table);
  row.round = static_cast<int16_t>(round);
  row.Board = static_cast<int16_t>(board);
  row.stamp = stamp;
  return row;
}

Result<PicturePointer> FakeDatabase::ReadNow(const std::string& path) {
  ++reads;
  if (!next.empty()) {
    const PicturePointer picture = next.front();
    next.pop_front();
    return picture;
  }
  const auto file = files_.find(path);
  if (unreadable || file == files_.end() || failures-- > 0) return failure;
  return file->second;
}

std::vector<ScoringFile> FakeDatabase::Files(const std::string& folder) {
  std::vector<ScoringFile> files;
  for (const auto& [path, picture] : files_) {
    if (path.starts_with(folder)) {
      files.push_back({path.substr(folder.size()), picture->fileDate});
    }
  }
  return files;
}

void FakeDatabase::Put(const std::string& path, ScoringPicture picture, DateTime modified) {
  picture.fileDate = modified;
  files_[path] = std::make_shared<ScoringPicture>(std::move(picture));
}

ScoringBench::ScoringBench(ClockTime start, DateTime day, const std::string& boot)
    : base(start, day, boot) {
  clocks.broadcast.Add(monitor);
  clocks.broadcast.Add(*this);
  session.options.LogFile = true;
}

void ScoringBench::Open(const ScoringPicture& picture) {
  Write(picture);
  link.BWSOpenFile(kFile);
  monitor.FileChanged();
}

void ScoringBench::PassWithPolls(double seconds) {
  while (seconds > 0) {
    const double step = std::min<double>(seconds, kPollSeconds);
    clocks.Pass(step);
    monitor.TimerBWS_Timer();
    seconds -= step;
  }
}

}  // namespace corvanel
