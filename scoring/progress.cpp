#include "scoring/progress.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace corvanel {
namespace {

// Deliberate: the thresholds differ.
constexpr size_t kSlowListed = 3;
constexpr size_t kPlayingListed = 4;

TableState StateOf(const TableRound* row, int received, bool nearlyOver) {
  const int boards = row == nullptr ? 0 : static_cast<int>(row->boards.size());
  const bool playable = row != nullptr && row->Playable();
  // Whoever sends results plays, whatever the movement says.
  if (!playable && received == 0) return TableState::NotPlaying;
  if (received >= boards) return TableState::Finished;
  if (received >= boards - 1) return TableState::Playing;
  return nearlyOver ? TableState::Slow : TableState::LastBoard;
}

/// Nothing was ever heard of the table, although it had a round to play before this one.
bool IsSilent(const ScoringSession& session, const ScoringSection& section, int16_t table,
              int16_t round) {
  if (session.Heard(section.row.ID, table)) return false;
  const auto& rounds = section.rounds.at(table);
  return std::any_of(rounds.begin(), rounds.lower_bound(round),
                     [](const auto& played) { return played.second.Playable(); });
}

/// How many rounds just before this one the table had to play and sent nothing of.
int SilentRounds(const ScoringSession& session, const ScoringSection& section, int16_t table,
                 int16_t round) {
  int silent = 0;
  const auto& rounds = section.rounds.at(table);
  for (auto played = rounds.lower_bound(round); played != rounds.begin();) {
    --played;
    if (session.Received(section.row.ID, table, played->first) != nullptr) break;
    if (played->second.Playable()) ++silent;
  }
  return silent;
}

std::vector<std::string> TextsOf(const RoundProgress& progress, bool showSlow) {
  std::vector<std::string> texts;
  const auto slow = progress.Labels(TableState::Slow);
  if (showSlow && slow.size() > kSlowListed) {
    texts.push_back(fmt::format("{} slow tables", slow.size()));
  } else if (showSlow && !slow.empty()) {
    texts.push_back(fmt::format("Last board not started at table{}{}", slow.size() > 1 ? "s " : " ",
                                fmt::join(slow, " ")));
  }
  const auto playing = progress.PlayingLabels();
  if (playing.size() > kPlayingListed) {
    texts.push_back(fmt::format("{} tables playing", playing.size()));
  } else if (!playing.empty()) {
    texts.push_back(fmt::format("{} {} still playing", playing.size() == 1 ? "Table" : "Tables",
                                fmt::join(playing, " ")));
  }
  return texts;
}

}  // namespace

std::vector<std::string> RoundProgress::Labels(TableState state) const {
  std::vector<std::string> labels;
  for (const TableProgress& table : tables) {
    if (table.state == state) labels.push_back(table.label);
  }
  return labels;
}

std::vector<std::string> RoundProgress::PlayingLabels() const {
  std::vector<std::string> labels;
  for (const TableProgress& table : tables) {
    if (table.StillPlaying()) labels.push_back(table.label);
  }
  return labels;
}

std::string RoundProgress::Waiting() const {
  const auto playing = PlayingLabels();
  if (playing.empty()) return {};
  if (playing.size() > kPlayingListed) return fmt::format("WAITING FOR {} TABLES", playing.size());
  return fmt::format("WAITING FOR TABLE{} {}", playing.size() == 1 ? "" : "S",
                     fmt::join(playing, " "));
}

bool RoundProgress::AllFinished() const {
  bool finished = false;
  for (const TableProgress& table : tables) {
    if (table.StillPlaying() || table.state == TableState::Silent) return false;
    finished |= table.state == TableState::Finished;
  }
  return finished;
}

RoundProgress ProgressOf(const ScoringSession& session, const ProgressInput& input) {
  RoundProgress progress;
  progress.highestRound = session.HighestRound();
  const bool several = session.SelectedSections() > 1;
  const bool nearlyOver = input.secondsLeft <= input.minPerBoard * 60.0;
  for (const ScoringSection& section : session.Sections()) {
    for (const auto& [number, rounds] : section.rounds) {
      TableProgress table{section.row.ID, number,
                          (several ? section.row.letter : "") + std::to_string(number)};
      const TableRound* row = section.Find(number, input.round);
      const ReceivedBoards* received = session.Received(section.row.ID, number, input.round);
      table.boards = row == nullptr ? 0 : static_cast<int>(row->boards.size());
      table.received = received == nullptr ? 0 : received->Count();
      table.state = StateOf(row, table.received, nearlyOver);
      if (table.StillPlaying() && IsSilent(session, section, number, input.round)) {
        table.state = TableState::Silent;
      }
      if (table.StillPlaying() || table.state == TableState::Silent) {
        table.silentRounds = SilentRounds(session, section, number, input.round);
        if (input.leftOut.contains({section.row.ID, number})) table.state = TableState::LeftOut;
      }
      progress.tables.push_back(std::move(table));
    }
  }
  if (progress.Playing() > 0 && progress.highestRound == input.round) {
    progress.texts = TextsOf(progress, input.showSlow);
  }
  return progress;
}

std::string PairsAt(const ScoringSession& session, const TableProgress& table, int16_t round) {
  const ScoringSection& section = *session.Section(table.section);
  const TableRound* row = section.Find(table.table, round);
  if (row == nullptr) return table.label;
  return row->Playable()
             ? fmt::format("{}: NS {}, EW {}", table.label, GetPairNum(*row, true),
                           GetPairNum(*row, false))
             : fmt::format("{}: {} sits out", table.label, GetPairNumDirn(section, *row));
}

std::vector<SectionCells> GridOf(const ScoringSession& session, const RoundProgress& progress,
                                 const ProgressInput& input) {
  std::vector<SectionCells> grid;
  const bool several = session.SelectedSections() > 1;
  int16_t section = 0;
  const std::map<TableId, std::string> names = GetTableNames(session.Picture());
  for (const TableProgress& table : progress.tables) {
    if (grid.empty() || table.section != section) {
      section = table.section;
      grid.push_back({several ? session.Section(section)->row.letter : "", {}});
    }
    TableCell cell{std::to_string(table.table), table.state,
                   fmt::format("{}/{}", table.received, table.boards),
                   PairsAt(session, table, input.round)};
    const auto seated = names.find({section, table.table});
    if (seated != names.end()) cell.tip += '\n' + seated->second;
    if (table.state == TableState::Finished) cell.text.clear();
    if (table.state == TableState::Silent) cell.text = "?";
    if (table.state == TableState::LeftOut) cell.text = "out";
    if (table.state == TableState::NotPlaying) cell.text = input.round < input.rounds ? "NP" : "";
    grid.back().cells.push_back(std::move(cell));
  }
  return grid;
}

}  // namespace corvanel
