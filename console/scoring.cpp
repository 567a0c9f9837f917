#include "console/scoring.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "scoring/movement.h"
#include "scoring/progress.h"
#include "system/scoring_files.h"

namespace corvanel {
namespace {

using nlohmann::ordered_json;

constexpr int64_t kEvening = 12L * 3600;  // seconds
constexpr int64_t kNothingMore = 60;      // seconds after the last result

ordered_json JsonOf(const RoundProgress& progress, int round) {
  ordered_json tables = ordered_json::array();
  for (const TableProgress& table : progress.tables) {
    tables.push_back({{"section", table.section},
                      {"table", table.table},
                      {"boards", table.boards},
                      {"received", table.received},
                      {"state", NameOf(table.state)}});
  }
  return {{"round", round},
          {"playing", progress.PlayingLabels()},
          {"slow", progress.Labels(TableState::Slow)},
          {"finished", progress.Labels(TableState::Finished)},
          {"notPlaying", progress.Labels(TableState::NotPlaying)},
          {"silent", progress.Labels(TableState::Silent)},
          {"texts", progress.texts},
          {"tables", tables}};
}

ordered_json JsonOf(const ScoringSession& model) {
  const ScoringPicture& picture = model.Picture();
  ordered_json sections = ordered_json::array();
  for (const ScoringSection& section : model.Sections()) {
    sections.push_back({{"id", section.row.ID},
                        {"letter", section.row.letter},
                        {"tables", section.row.Tables},
                        {"missingPair", section.row.MissingPair},
                        {"ewMoveBeforePlay", section.row.EWMoveBeforePlay},
                        {"boardsPerSet", section.boardsPerSet}});
  }
  ordered_json players = ordered_json::array();
  for (const PlayerRow& seat : picture.players) {
    players.push_back({{"section", seat.Section},
                       {"table", seat.Table},
                       {"direction", seat.Direction},
                       {"number", seat.Number},
                       {"name", seat.Name}});
  }
  const MovementMarks marks = MarksOf(model);
  return {{"unit", picture.unit},
          {"format", picture.format},
          {"sessionName", picture.sessionName},
          {"sessionStart", IsoText(picture.SessionStart())},
          {"computer", picture.computer},
          {"sections", sections},
          {"rounds", model.Rounds()},
          {"totalTables", model.TotalTables()},
          {"maxBoardsPerSet", model.MaxBoardsPerSet()},
          {"received", picture.received.size()},
          {"leftOut", LeftOutLine(picture)},
          {"highestRound", model.HighestRound()},
          {"skip", marks.skip},
          {"arrow", marks.arrow},
          {"players", players}};
}

/// Tab-separated lines for people.
void PrintLines(const ScoringSession& model, const RoundProgress& progress, int round) {
  const ScoringPicture& picture = model.Picture();
  const MovementMarks marks = MarksOf(model);
  fmt::print("session\t{}\nstart\t{}\nunit\t{} ({})\n", picture.sessionName,
             DateAndTimeText(picture.SessionStart()), picture.unit, picture.format);
  for (const ScoringSection& section : model.Sections()) {
    fmt::print("section\t{}\t{} tables\t{} boards per round\n", section.row.letter,
               section.row.Tables, section.boardsPerSet);
  }
  fmt::print("rounds\t{}\nskip\t{}\narrow\t{}\nresults\t{}\nround\t{}\n", model.Rounds(),
             marks.skip, marks.arrow, picture.received.size(), round);
  for (const TableProgress& table : progress.tables) {
    fmt::print("table\t{}\t{}/{}\t{}\n", table.label, table.received, table.boards,
               NameOf(table.state));
  }
  for (const std::string& text : progress.texts) fmt::print("progress\t{}\n", text);
  const std::string leftOut = LeftOutLine(picture);
  if (!leftOut.empty()) fmt::print("left out\t{}\n", leftOut);
}

/// When the session of a file began, by the clocks of its units: as it says, when most results lie
/// in the evening after that; else as long before the first of an evening as a board takes.
/// Results that lie elsewhere come from units with wrong clocks.
int64_t OriginOf(const std::vector<ResultRow>& results, int64_t start, int64_t secondsPerBoard) {
  const auto inEvening = [&](int64_t from) {
    return std::count_if(results.begin(), results.end(), [&](const ResultRow& row) {
      return row.stamp.seconds >= from && row.stamp.seconds < from + kEvening;
    });
  };
  const auto size = static_cast<std::ptrdiff_t>(results.size());
  if (results.empty() || inEvening(start) * 2 > size) return start;
  const auto first = std::find_if(results.begin(), results.end(), [&](const ResultRow& row) {
    return inEvening(row.stamp.seconds) * 2 > size;
  });
  return (first == results.end() ? results.front() : *first).stamp.seconds - secondsPerBoard;
}

}  // namespace

PicturePointer ReadScoring(const std::string& file) {
  const auto picture = ReadScoringFile(file, {});
  if (!picture) throw UsageError(fmt::format("{}: {}", file, picture.Failure().description));
  return picture.Value().picture;
}

void PrintScoring(const ConsoleArguments& arguments) {
  const PicturePointer picture = ReadScoring(arguments.file);
  const ScoringSession model(picture, AllSections(*picture));
  const int round = arguments.round.value_or(std::max<int>(model.HighestRound(), 1));
  // Looked at as when the round's time is spent: whoever has not begun the last board is slow.
  const RoundProgress progress =
      ProgressOf(model, {static_cast<int16_t>(round), model.Rounds(), 0, 0, true});
  if (!arguments.json) {
    PrintLines(model, progress, round);
    return;
  }
  ordered_json json = JsonOf(model);
  json["progress"] = JsonOf(progress, round);
  fmt::print("{}\n", json.dump(2, ' ', false, ordered_json::error_handler_t::replace));
}

Replay::Replay(PicturePointer picture, const Session& session, const TimeSource& time)
    : whole_(std::move(picture)),
      results_(whole_->received),
      start_(time.Now().seconds),
      time_(time) {
  std::stable_sort(results_.begin(), results_.end(),
                   [](const ResultRow& a, const ResultRow& b) { return a.stamp < b.stamp; });
  origin_ = OriginOf(results_, whole_->SessionStart().seconds,
                     static_cast<int64_t>(session.options.BMMinPerBoard * 60));
  ShowUpTo(0);
}

void Replay::BWSReadFile(std::function<void(bool)> done) {
  const int64_t now = origin_ + time_.Now().seconds - start_;
  // The file has nothing more to say: the clock runs on as with a link that has gone.
  const bool more = !results_.empty() && now <= results_.back().stamp.seconds + kNothingMore;
  if (more) ShowUpTo(now);
  done(more);
}

void Replay::ShowUpTo(int64_t now) {
  const auto end =
      std::upper_bound(results_.begin(), results_.end(), now,
                       [](int64_t t, const ResultRow& row) { return t < row.stamp.seconds; });
  const auto count = static_cast<size_t>(end - results_.begin());
  if (count == shown_ && !model_.Empty()) return;
  shown_ = count;
  auto picture = std::make_shared<ScoringPicture>(*whole_);
  picture->received.assign(results_.begin(), end);
  model_ = ScoringSession(picture, AllSections(*picture));
}

}  // namespace corvanel
