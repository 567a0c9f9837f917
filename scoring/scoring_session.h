#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "scoring/scoring_picture.h"

namespace corvanel {

/// A table of a session: its section's ID, and its number.
using TableId = std::pair<int16_t, int16_t>;

/// What a table does in one round.
struct TableRound {
  int16_t nsPair = 0;
  int16_t ewPair = 0;
  std::vector<int16_t> boards;  // that it should play
  bool missingPair = false;     // it meets the pair that is missing

  /// Whether there is something to play.
  bool Playable() const { return !boards.empty() && nsPair != 0 && ewPair != 0 && !missingPair; }
};

/// One section of the session. `rounds` is by table and round.
struct ScoringSection {
  SectionRow row;
  bool selected = true;
  int16_t boardsPerSet = 0;  // the most boards that a table plays in a round
  std::map<int16_t, std::map<int16_t, TableRound>> rounds;

  const TableRound* Find(int16_t table, int16_t round) const;
  /// Whether north-south and east-west pairs have the same numbers: then NS 3 and EW 3 are two
  /// pairs.
  bool SharesNumbers() const;
};

/// The boards that one table has sent in one round.
struct ReceivedBoards {
  std::vector<std::pair<int16_t, int>> results;  // boards, each with received less erased

  void Add(int16_t board, int change);
  /// Whether the board has a result that still counts.
  bool Counts(int16_t board) const;
  /// Boards with a result that still counts; one sent twice counts once.
  int Count() const;
};

/// The model of a session, built from one picture of the scoring database. Plain values.
class ScoringSession {
 public:
  ScoringSession() = default;
  /// `selected` are the IDs of the sections to follow.
  ScoringSession(PicturePointer picture, const std::set<int16_t>& selected);

  const ScoringPicture& Picture() const { return *picture_; }
  const PicturePointer& Pointer() const { return picture_; }
  bool Empty() const { return picture_ == nullptr; }
  const std::vector<ScoringSection>& Sections() const { return sections_; }
  /// The section with an ID; null when there is none.
  const ScoringSection* Section(int16_t id) const;
  /// The results in order of their time-stamps, those of one second in the order of the file.
  const std::vector<const ResultRow*>& Results() const { return results_; }
  /// What a table has sent in a round; null when nothing.
  const ReceivedBoards* Received(int16_t section, int16_t table, int16_t round) const;
  /// How many results a table has sent, those that were taken back among them.
  size_t Sent(TableId table) const;
  /// Whether a table of a section has sent anything at all.
  bool Heard(int16_t section, int16_t table) const;

  // Totals of the selected sections.
  int SelectedSections() const;
  int TotalTables() const;
  int16_t MaxBoardsPerSet() const;
  int16_t Rounds() const;
  /// The highest round of which a result counts; 0 when there is none.
  int16_t HighestRound() const { return highestRound_; }

 private:
  void TakeMovement();
  void TakeResults();

  PicturePointer picture_;
  std::vector<ScoringSection> sections_;
  std::map<int16_t, size_t> positions_;  // of a section's ID in the list
  std::vector<const ResultRow*> results_;
  std::unordered_map<uint64_t, ReceivedBoards> received_;  // by section, table and round
  std::unordered_set<uint64_t> heard_;                     // by section and table
  int16_t highestRound_ = 0;
};

/// A scoring database that is being followed.
class FollowedScoring {
 public:
  virtual ~FollowedScoring() = default;
  virtual bool IsOpen() const = 0;
  /// Has it read again. `done` is called, at once or later, when that has come to an end: with
  /// false, and the model as it was, when there is no good picture.
  virtual void BWSReadFile(std::function<void(bool read)> done) = 0;
  virtual const ScoringSession& Model() const = 0;
  /// Whether the file still holds the session that it was opened for, or the director says so.
  virtual bool IsTonights() const = 0;
  /// The tables that the director has left out, as far as they have sent nothing since.
  virtual std::set<TableId> LeftOut() const = 0;
  /// Tells the director again of those tables, also where he dismissed their lines.
  virtual void TellOfLeftOut() {}
};

/// What could not be read of a file, "3 rows could not be read"; empty when all could.
std::string LeftOutLine(const ScoringPicture& picture);

/// The IDs of all sections of a picture.
std::set<int16_t> AllSections(const ScoringPicture& picture);

/// The number of the pair at a table in a round, with blanks before it to a width of 3.
std::string GetPairNum(const TableRound& table, bool northSouth);
/// The same with "NS" or "EW" behind it: the pair that sits there, north-south unless that side
/// is empty or missing.
std::string GetPairNumDirn(const ScoringSection& section, const TableRound& table);
/// The names of the tables' players by their seats, "N: Ann, S: Bob", as far as they are known.
std::map<TableId, std::string> GetTableNames(const ScoringPicture& picture);

}  // namespace corvanel
