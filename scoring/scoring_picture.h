#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "basics/date_time.h"
#include "basics/result.h"

namespace corvanel {

/// A row of table "Section".
struct SectionRow {
  int16_t ID = 0;
  std::string letter;
  int16_t Tables = 0;
  int16_t MissingPair = 0;  // 0: none; negative: the missing side is east-west
  int16_t EWMoveBeforePlay = 0;

  bool operator==(const SectionRow&) const = default;
};

/// A row of table "PlayerNumbers": one seat.
struct PlayerRow {
  int16_t Section = 0;
  int16_t Table = 0;
  std::string Direction;
  std::string Number;
  std::string Name;

  bool operator==(const PlayerRow&) const = default;
};

/// A row of table "RoundData": what a table plays in a round.
struct RoundRow {
  int16_t Section = 0;
  int16_t Table = 0;
  int16_t round = 0;
  int16_t NSPair = 0;
  int16_t EWpair = 0;
  int16_t LowBoard = 0;
  int16_t HighBoard = 0;
  std::string CustomBoards;  // comma list that stands in place of low to high; may be empty

  bool operator==(const RoundRow&) const = default;
};

/// A row of table "ReceivedData": a result that a unit sent.
struct ResultRow {
  int32_t ID = 0;  // 0 in files without it
  int16_t Section = 0;
  int16_t Table = 0;
  int16_t round = 0;
  int16_t Board = 0;
  int16_t PairNS = 0;
  int16_t PairEW = 0;
  int16_t Declarer = 0;
  std::string NS_EW;
  std::string Contract;
  std::string Result;
  std::string LeadCard;
  std::string Remarks;
  DateTime stamp;      // DateLog + TimeLog
  int16_t Erased = 0;  // not 0: the result was taken back

  bool operator==(const ResultRow&) const = default;
};

/// Everything of one scoring database at one moment, as the file has it: rows in table order,
/// texts without padding, null texts empty.
struct ScoringPicture {
  std::string unit = "Bridgemate";  // or "BridgeTab", as the tables tell
  std::string format;               // "Jet3" or "Jet4"
  std::string sessionName;
  std::optional<DateTime> sessionDate;  // of table "Session", when both its columns are there
  std::string computer;
  int16_t nameSource = -1;  // `BM2NameSource`; -1 when the file does not say
  std::vector<SectionRow> sections;
  std::vector<PlayerRow> players;  // with the names of "PlayerNames" where `nameSource` is 0
  std::vector<RoundRow> rounds;
  std::vector<ResultRow> received;
  int rowsLeftOut = 0;  // that could not be read
  std::vector<std::string> tablesLeftOut;
  DateTime fileDate;  // the file was last modified

  bool operator==(const ScoringPicture&) const = default;
  DateTime SessionStart() const { return sessionDate.value_or(fileDate); }
};

using PicturePointer = std::shared_ptr<const ScoringPicture>;

}  // namespace corvanel
