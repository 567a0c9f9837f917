#include "scoring/scoring_session.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr int kMostBoards = 200;  // in one round; more is nonsense in a file

std::vector<int16_t> BoardsOf(const RoundRow& row) {
  std::vector<int16_t> boards;
  if (!row.CustomBoards.empty()) {
    std::string_view rest = row.CustomBoards;
    while (!rest.empty() && boards.size() < kMostBoards) {
      const size_t comma = std::min(rest.find(','), rest.size());
      const double board = Val(rest.substr(0, comma));
      if (board >= 1 && board <= INT16_MAX) boards.push_back(static_cast<int16_t>(board));
      rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    return boards;
  }
  if (row.LowBoard < 1 || row.HighBoard - row.LowBoard >= kMostBoards) return boards;
  for (int board = row.LowBoard; board <= row.HighBoard; ++board) {
    boards.push_back(static_cast<int16_t>(board));
  }
  return boards;
}

/// One number for a section's table, in a round or (0) in all of them.
uint64_t KeyOf(int16_t section, int16_t table, int16_t round = 0) {
  const auto part = [](int16_t number) { return uint64_t{static_cast<uint16_t>(number)}; };
  return part(section) << 32U | part(table) << 16U | part(round);
}

uint64_t WithoutRound(uint64_t key) {
  return key & ~uint64_t{0xFFFF};
}

void MarkMissingPair(ScoringSection& section) {
  const int missing = section.row.MissingPair;
  if (missing == 0) return;
  const bool shared = section.SharesNumbers();
  for (auto& [table, rounds] : section.rounds) {
    for (auto& [round, row] : rounds) {
      const bool ns = missing > 0 && row.nsPair == missing;
      const bool ew = missing < 0 ? row.ewPair == -missing : !shared && row.ewPair == missing;
      row.missingPair = ns || ew;
    }
  }
}

}  // namespace

const TableRound* ScoringSection::Find(int16_t table, int16_t round) const {
  const auto found = rounds.find(table);
  if (found == rounds.end()) return nullptr;
  const auto row = found->second.find(round);
  return row == found->second.end() ? nullptr : &row->second;
}

bool ScoringSection::SharesNumbers() const {
  std::map<int16_t, std::set<int16_t>> northSouth;  // by round
  for (const auto& [table, played] : rounds) {
    for (const auto& [round, row] : played) northSouth[round].insert(row.nsPair);
  }
  for (const auto& [table, played] : rounds) {
    for (const auto& [round, row] : played) {
      if (row.ewPair != 0 && northSouth[round].contains(row.ewPair)) return true;
    }
  }
  return false;
}

void ReceivedBoards::Add(int16_t board, int change) {
  for (auto& [present, sum] : results) {
    if (present != board) continue;
    sum += change;
    return;
  }
  results.reserve(4);
  results.emplace_back(board, change);
}

bool ReceivedBoards::Counts(int16_t board) const {
  return std::any_of(results.begin(), results.end(),
                     [&](const auto& b) { return b.first == board && b.second > 0; });
}

int ReceivedBoards::Count() const {
  return static_cast<int>(
      std::count_if(results.begin(), results.end(), [](const auto& b) { return b.second > 0; }));
}

ScoringSession::ScoringSession(PicturePointer picture, const std::set<int16_t>& selected)
    : picture_(std::move(picture)) {
  for (const SectionRow& row : picture_->sections) {
    positions_[row.ID] = sections_.size();
    sections_.push_back({row, selected.contains(row.ID), 0, {}});
  }
  TakeMovement();
  TakeResults();
}

void ScoringSession::TakeMovement() {
  for (const RoundRow& row : picture_->rounds) {
    const auto position = positions_.find(row.Section);
    if (position == positions_.end() || row.Table < 1 || row.round < 1) continue;
    ScoringSection& section = sections_[position->second];
    if (!section.selected) continue;
    TableRound& round = section.rounds[row.Table][row.round];
    round = {row.NSPair, row.EWpair, BoardsOf(row), false};
    section.boardsPerSet =
        std::max(section.boardsPerSet, static_cast<int16_t>(round.boards.size()));
  }
  for (ScoringSection& section : sections_) MarkMissingPair(section);
}

void ScoringSession::TakeResults() {
  // By time; those of one second lie in the picture in the order of the file.
  std::vector<std::pair<DateTime, const ResultRow*>> order;
  order.reserve(picture_->received.size());
  for (const ResultRow& row : picture_->received) {
    const ScoringSection* section = Section(row.Section);
    if (section != nullptr && section->selected) order.emplace_back(row.stamp, &row);
  }
  if (!std::is_sorted(order.begin(), order.end())) std::sort(order.begin(), order.end());
  results_.reserve(order.size());
  for (const auto& [stamp, row] : order) results_.push_back(row);
  received_.reserve(results_.size());
  for (const ResultRow* row : results_) {
    received_[KeyOf(row->Section, row->Table, row->round)].Add(row->Board,
                                                               row->Erased != 0 ? -1 : 1);
  }
  for (const auto& [key, boards] : received_) heard_.insert(WithoutRound(key));
  for (const ResultRow* row : results_) {
    if (row->round > highestRound_ && Received(row->Section, row->Table, row->round)->Count() > 0) {
      highestRound_ = row->round;
    }
  }
}

const ScoringSection* ScoringSession::Section(int16_t id) const {
  const auto position = positions_.find(id);
  return position == positions_.end() ? nullptr : &sections_[position->second];
}

const ReceivedBoards* ScoringSession::Received(int16_t section, int16_t table,
                                               int16_t round) const {
  const auto found = received_.find(KeyOf(section, table, round));
  return found == received_.end() ? nullptr : &found->second;
}

size_t ScoringSession::Sent(TableId table) const {
  return static_cast<size_t>(
      std::count_if(results_.begin(), results_.end(), [&](const ResultRow* row) {
        return row->Section == table.first && row->Table == table.second;
      }));
}

bool ScoringSession::Heard(int16_t section, int16_t table) const {
  return heard_.contains(KeyOf(section, table));
}

int ScoringSession::SelectedSections() const {
  return static_cast<int>(std::count_if(sections_.begin(), sections_.end(),
                                        [](const ScoringSection& s) { return s.selected; }));
}

int ScoringSession::TotalTables() const {
  int tables = 0;
  for (const ScoringSection& section : sections_)
    tables += section.selected ? section.row.Tables : 0;
  return tables;
}

int16_t ScoringSession::MaxBoardsPerSet() const {
  int16_t most = 0;
  for (const ScoringSection& section : sections_) most = std::max(most, section.boardsPerSet);
  return most;
}

int16_t ScoringSession::Rounds() const {
  int16_t most = 0;
  for (const ScoringSection& section : sections_) {
    for (const auto& [table, rounds] : section.rounds) {
      if (!rounds.empty()) most = std::max(most, rounds.rbegin()->first);
    }
  }
  return most;
}

std::string LeftOutLine(const ScoringPicture& picture) {
  std::string line;
  if (picture.rowsLeftOut > 0) {
    line = fmt::format("{} row{}", picture.rowsLeftOut, picture.rowsLeftOut == 1 ? "" : "s");
  }
  if (!picture.tablesLeftOut.empty()) {
    line += fmt::format("{}the list{} {}", line.empty() ? "" : " and ",
                        picture.tablesLeftOut.size() == 1 ? "" : "s",
                        fmt::join(picture.tablesLeftOut, ", "));
  }
  return line.empty() ? line : line + " could not be read";
}

std::set<int16_t> AllSections(const ScoringPicture& picture) {
  std::set<int16_t> ids;
  for (const SectionRow& row : picture.sections) ids.insert(row.ID);
  return ids;
}

std::string GetPairNum(const TableRound& table, bool northSouth) {
  return fmt::format("{:3}", northSouth ? table.nsPair : table.ewPair);
}

std::string GetPairNumDirn(const ScoringSection& section, const TableRound& table) {
  const bool nsMissing = table.missingPair && table.nsPair == section.row.MissingPair;
  const bool northSouth = table.nsPair != 0 && !nsMissing;
  return GetPairNum(table, northSouth) + (northSouth ? "NS" : "EW");
}

std::map<TableId, std::string> GetTableNames(const ScoringPicture& picture) {
  std::map<TableId, std::string> names;
  for (const PlayerRow& seat : picture.players) {
    if (seat.Name.empty()) continue;
    std::string& table = names[{seat.Section, seat.Table}];
    table += (table.empty() ? "" : ", ") + seat.Direction + ": " + seat.Name;
  }
  return names;
}

}  // namespace corvanel
