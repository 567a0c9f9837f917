#include "scoring/read_picture.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <unordered_map>

#include "basics/numbers.h"
#include "scoring/jet/database.h"

namespace corvanel {
namespace {

constexpr size_t kBudgetPerByte = 8;  // bytes of memory for each of the file
constexpr size_t kCostOfRow = 16;     // of looking at one, as if it were memory
/// The tables that play is followed by. Of the others a damaged one is left out.
constexpr std::string_view kNeeded[] = {"Section", "RoundData", "ReceivedData"};
constexpr int kUnknownFormat = 3343;  // the database engine's "unrecognized database format"

/// The day of the one and the time of day of the other: some programs put both into both.
std::optional<DateTime> MomentOf(double date, double time) {
  return DateTime::FromDays(std::floor(date) + (time - std::floor(time)));
}

/// Reads the tables one by one; the first that fails ends it.
class PictureReader {
 public:
  explicit PictureReader(const std::string& bytes)
      : database_({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()}),
        budget_(kBudgetPerByte * bytes.size()) {}

  /// The table that could not be read; empty when all went well.
  std::string Read();
  ScoringPicture Picture() { return std::move(picture_); }

 private:
  using Take = std::function<void(const jet::Row&)>;
  enum class Rows { All, First };

  /// Opens a table, lets `prepare` find its columns and read its rows. A table that is not there
  /// has no rows.
  void ReadTable(const char* name, Rows rows, const std::function<Take(const jet::Table&)>& prepare);
  /// Takes memory off the budget: a hostile file can make few bytes look like many rows. False when
  /// it is spent.
  bool Spend(size_t bytes, std::initializer_list<const std::string*> texts);
  void FindUnit();
  void ReadSessionRow();
  void ReadSections();
  void ReadPlayers();
  void ReadNames();
  void ReadRounds();
  void ReadReceived();
  void CheckSections();
  void Fail(const char* table) {
    if (failed_.empty()) failed_ = table;
  }

  jet::Database database_;
  size_t budget_;  // bytes of memory that may still be taken
  ScoringPicture picture_;
  std::string failed_;
};

void PictureReader::ReadTable(const char* name, Rows rows,
                              const std::function<Take(const jet::Table&)>& prepare) {
  const auto table = failed_.empty() ? database_.Find(name) : std::nullopt;
  if (!table) return;
  const Take take = table->Sound() ? prepare(*table) : Take();
  const jet::TableRead read = table->ForEachRow([&](const jet::Row& row) {
    take(row);
    if (!Spend(kCostOfRow, {})) Fail(name);
    return rows == Rows::All && failed_.empty();
  });
  picture_.rowsLeftOut += static_cast<int>(read.leftOut);
  if (read.whole) return;
  if (std::find(std::begin(kNeeded), std::end(kNeeded), name) != std::end(kNeeded)) {
    Fail(name);
  } else {
    picture_.tablesLeftOut.emplace_back(name);
  }
}

bool PictureReader::Spend(size_t bytes, std::initializer_list<const std::string*> texts) {
  for (const std::string* text : texts) bytes += text->size();
  if (bytes > budget_) return false;
  budget_ -= bytes;
  return true;
}

std::string PictureReader::Read() {
  if (!database_.Sound()) return "the list of its tables";
  picture_.format = database_.IsJet3() ? "Jet3" : "Jet4";
  FindUnit();
  ReadTable("Clients", Rows::First, [&](const jet::Table& table) -> Take {
    return [&, computer = table.Find("Computer")](const jet::Row& row) {
      picture_.computer = row.Text(computer);
    };
  });
  ReadSessionRow();
  ReadSections();
  ReadPlayers();
  ReadTable("Settings", Rows::First, [&](const jet::Table& table) -> Take {
    return [&, source = table.Find("BM2NameSource")](const jet::Row& row) {
      if (row.Number(source)) picture_.nameSource = row.Short(source);
    };
  });
  if (picture_.nameSource == 0) ReadNames();
  ReadRounds();
  ReadReceived();
  if (failed_.empty()) CheckSections();
  return failed_;
}

/// The later of the two tables in the list decides.
void PictureReader::FindUnit() {
  for (const std::string& name : database_.TableNames()) {
    if (SameName(name, "Session")) picture_.unit = "Bridgemate";
    if (SameName(name, "Events")) picture_.unit = "BridgeTab";
  }
}

void PictureReader::ReadSessionRow() {
  const bool events = picture_.unit == "BridgeTab";
  ReadTable(events ? "Events" : "Session", Rows::First, [&](const jet::Table& table) -> Take {
    const int name = table.Find(events ? "EventID" : "Name");
    const int date = events ? -1 : table.Find("Date");
    const int time = events ? -1 : table.Find("Time");
    return [=, this](const jet::Row& row) {
      picture_.sessionName = row.Text(name);
      const auto days = row.Days(date);
      const auto part = row.Days(time);
      if (days && part) picture_.sessionDate = MomentOf(*days, *part);
    };
  });
}

void PictureReader::ReadSections() {
  ReadTable("Section", Rows::All, [&](const jet::Table& table) -> Take {
    return [&, id = table.Find("ID"), letter = table.Find("Letter"),
            tables = table.Find("Tables"), missing = table.Find("MissingPair"),
            move = table.Find("EWMoveBeforePlay")](const jet::Row& row) {
      SectionRow section{row.Short(id), row.Text(letter), row.Short(tables), row.Short(missing),
                         row.Short(move)};
      if (!Spend(sizeof section, {&section.letter})) Fail("Section");
      picture_.sections.push_back(std::move(section));
    };
  });
}

void PictureReader::ReadPlayers() {
  ReadTable("PlayerNumbers", Rows::All, [&](const jet::Table& table) -> Take {
    return [&, section = table.Find("Section"), tableNumber = table.Find("Table"),
            direction = table.Find("Direction"), number = table.Find("Number"),
            name = table.Find("Name")](const jet::Row& row) {
      PlayerRow seat{row.Short(section), row.Short(tableNumber), row.Text(direction),
                     row.Text(number), row.Text(name)};
      if (!Spend(sizeof seat, {&seat.Direction, &seat.Number, &seat.Name})) Fail("PlayerNumbers");
      picture_.players.push_back(std::move(seat));
    };
  });
}

/// Puts the club's names to the seats: the wanted numbers first, then one pass through the list,
/// of which only the wanted names are converted. A number that is not listed has no name.
void PictureReader::ReadNames() {
  std::unordered_map<int32_t, std::optional<std::string>> wanted;
  for (const PlayerRow& seat : picture_.players) {
    const double number = Val(seat.Number);
    if (number > 0 && number <= INT32_MAX) wanted[static_cast<int32_t>(number)];
  }
  ReadTable("PlayerNames", Rows::All, [&](const jet::Table& table) -> Take {
    return [&, id = table.Find("ID"), name = table.Find("Name")](const jet::Row& row) {
      const auto seat = wanted.find(row.Number(id).value_or(0));
      if (seat == wanted.end() || seat->second) return;
      seat->second = row.Text(name);
      if (!Spend(0, {&*seat->second})) Fail("PlayerNames");
    };
  });
  for (PlayerRow& seat : picture_.players) {
    const double number = Val(seat.Number);
    if (number <= 0) continue;
    const auto found = wanted.find(static_cast<int32_t>(std::min<double>(number, INT32_MAX)));
    seat.Name = found == wanted.end() ? "" : found->second.value_or("");
    if (!Spend(0, {&seat.Name})) Fail("PlayerNames");
  }
}

void PictureReader::ReadRounds() {
  ReadTable("RoundData", Rows::All, [&](const jet::Table& table) -> Take {
    return [&, section = table.Find("Section"), tableNumber = table.Find("Table"),
            round = table.Find("Round"), ns = table.Find("NSPair"), ew = table.Find("EWPair"),
            low = table.Find("LowBoard"), high = table.Find("HighBoard"),
            custom = table.Find("CustomBoards")](const jet::Row& row) {
      RoundRow played{row.Short(section), row.Short(tableNumber), row.Short(round),
                      row.Short(ns),      row.Short(ew),          row.Short(low),
                      row.Short(high),    row.Text(custom)};
      if (!Spend(sizeof played, {&played.CustomBoards})) Fail("RoundData");
      picture_.rounds.push_back(std::move(played));
    };
  });
}

void PictureReader::ReadReceived() {
  ReadTable("ReceivedData", Rows::All, [&](const jet::Table& table) -> Take {
    const auto column = [&](const char* name) { return table.Find(name); };
    return [&, id = column("ID"), section = column("Section"), tableNumber = column("Table"),
            round = column("Round"), board = column("Board"), ns = column("PairNS"),
            ew = column("PairEW"), declarer = column("Declarer"), direction = column("NS/EW"),
            contract = column("Contract"), result = column("Result"), lead = column("LeadCard"),
            remarks = column("Remarks"), date = column("DateLog"), time = column("TimeLog"),
            erased = column("Erased")](const jet::Row& row) {
      ResultRow sent;
      sent.ID = row.Number(id).value_or(0);
      sent.Section = row.Short(section);
      sent.Table = row.Short(tableNumber);
      sent.round = row.Short(round);
      sent.Board = row.Short(board);
      sent.PairNS = row.Short(ns);
      sent.PairEW = row.Short(ew);
      sent.Declarer = row.Short(declarer);
      sent.NS_EW = row.Text(direction);
      sent.Contract = row.Text(contract);
      sent.Result = row.Text(result);
      sent.LeadCard = row.Text(lead);
      sent.Remarks = row.Text(remarks);
      sent.stamp = MomentOf(row.Days(date).value_or(0), row.Days(time).value_or(0))
                       .value_or(DateTime());
      sent.Erased = row.Flag(erased) ? int16_t{-1} : int16_t{0};
      if (!Spend(sizeof sent,
                 {&sent.NS_EW, &sent.Contract, &sent.Result, &sent.LeadCard, &sent.Remarks})) {
        Fail("ReceivedData");
      }
      picture_.received.push_back(std::move(sent));
    };
  });
}

/// Whether it is a scoring file, whose sections can be told apart.
void PictureReader::CheckSections() {
  std::vector<int16_t> ids;
  for (const SectionRow& section : picture_.sections) {
    if (std::find(ids.begin(), ids.end(), section.ID) != ids.end()) Fail("Section");
    ids.push_back(section.ID);
  }
  if (!database_.Find("Section")) Fail("Section");
}

}  // namespace

Result<ScoringPicture> ReadScoringPicture(const std::string& bytes) {
  PictureReader reader(bytes);
  const std::string failed = reader.Read();
  if (failed.empty()) return reader.Picture();
  return Error{kUnknownFormat, "Unrecognized database format (" + failed + ")"};
}

}  // namespace corvanel
