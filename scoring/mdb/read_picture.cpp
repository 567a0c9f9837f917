#include "scoring/mdb/read_picture.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "basics/numbers.h"
#include "scoring/mdb/mdb_database.h"

namespace corvanel {
namespace {

constexpr size_t kBudgetPerByte = 8;  // bytes of memory for each of the file
constexpr int kUnknownFormat = 3343;  // the database engine's "unrecognized database format"

/// Reads the tables one by one; the first that fails ends it.
class PictureReader {
 public:
  explicit PictureReader(const std::string& bytes)
      : database_(bytes),
        budget_(kBudgetPerByte * bytes.size(), std::chrono::milliseconds(kLongestRead)) {}

  /// The table that could not be read; empty when all went well.
  std::string Read();
  ScoringPicture Picture() { return std::move(picture_); }

 private:
  using Take = std::function<void(const MdbRow&)>;
  enum class Rows { All, First };

  /// Opens a table, lets `prepare` find its columns and read its rows. A table that is not there
  /// has no rows.
  void ReadTable(const char* name, Rows rows, const std::function<Take(const MdbTable&)>& prepare);
  bool Spend(size_t row, std::initializer_list<const std::string*> texts);
  void FindUnit();
  void ReadSessionRow();
  void ReadSections();
  void ReadPlayers();
  void ReadNames();
  void ReadRounds();
  void ReadReceived();
  void CheckAgreement();
  void Fail(const char* table) {
    if (failed_.empty()) failed_ = table;
  }

  MdbDatabase database_;
  ReadBudget budget_;
  ScoringPicture picture_;
  std::string failed_;
};

void PictureReader::ReadTable(const char* name, Rows rows,
                              const std::function<Take(const MdbTable&)>& prepare) {
  const auto table = failed_.empty() ? database_.Table(name) : nullptr;
  if (table == nullptr) return;
  const Take take = table->Sound() ? prepare(*table) : Take();
  bool first = false;
  const bool whole = table->Sound() && table->ForEachRow([&](const MdbRow& row) {
    take(row);
    first = rows == Rows::First;
    return !first && failed_.empty() && budget_.Spend(0);
  });
  if (!whole && !first) Fail(name);
}

bool PictureReader::Spend(size_t row, std::initializer_list<const std::string*> texts) {
  for (const std::string* text : texts) row += text->size();
  return budget_.Spend(row);
}

std::string PictureReader::Read() {
  if (!database_.Sound()) return "the list of its tables";
  picture_.format = database_.IsJet3() ? "Jet3" : "Jet4";
  FindUnit();
  ReadTable("Clients", Rows::First, [&](const MdbTable& table) -> Take {
    return [&, computer = table.Column("Computer")](const MdbRow& row) {
      picture_.computer = row.Text(computer);
    };
  });
  ReadSessionRow();
  ReadSections();
  ReadPlayers();
  ReadTable("Settings", Rows::First, [&](const MdbTable& table) -> Take {
    return [&, source = table.Column("BM2NameSource")](const MdbRow& row) {
      if (row.Number(source)) picture_.nameSource = row.Short(source);
    };
  });
  if (picture_.nameSource == 0) ReadNames();
  ReadRounds();
  ReadReceived();
  if (failed_.empty()) CheckAgreement();
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
  ReadTable(events ? "Events" : "Session", Rows::First, [&](const MdbTable& table) -> Take {
    const int name = table.Column(events ? "EventID" : "Name");
    const int date = events ? -1 : table.Column("Date");
    const int time = events ? -1 : table.Column("Time");
    return [=, this](const MdbRow& row) {
      picture_.sessionName = row.Text(name);
      const auto days = row.Days(date);
      const auto part = row.Days(time);
      if (days && part) picture_.sessionDate = DateTime::FromDays(*days + *part);
    };
  });
}

void PictureReader::ReadSections() {
  ReadTable("Section", Rows::All, [&](const MdbTable& table) -> Take {
    return [&, id = table.Column("ID"), letter = table.Column("Letter"),
            tables = table.Column("Tables"), missing = table.Column("MissingPair"),
            move = table.Column("EWMoveBeforePlay")](const MdbRow& row) {
      SectionRow section{row.Short(id), row.Text(letter), row.Short(tables), row.Short(missing),
                         row.Short(move)};
      if (!Spend(sizeof section, {&section.letter})) Fail("Section");
      picture_.sections.push_back(std::move(section));
    };
  });
}

void PictureReader::ReadPlayers() {
  ReadTable("PlayerNumbers", Rows::All, [&](const MdbTable& table) -> Take {
    return [&, section = table.Column("Section"), tableNumber = table.Column("Table"),
            direction = table.Column("Direction"), number = table.Column("Number"),
            name = table.Column("Name")](const MdbRow& row) {
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
  ReadTable("PlayerNames", Rows::All, [&](const MdbTable& table) -> Take {
    return [&, id = table.Column("ID"), name = table.Column("Name")](const MdbRow& row) {
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
  ReadTable("RoundData", Rows::All, [&](const MdbTable& table) -> Take {
    return [&, section = table.Column("Section"), tableNumber = table.Column("Table"),
            round = table.Column("Round"), ns = table.Column("NSPair"), ew = table.Column("EWPair"),
            low = table.Column("LowBoard"), high = table.Column("HighBoard"),
            custom = table.Column("CustomBoards")](const MdbRow& row) {
      RoundRow played{row.Short(section), row.Short(tableNumber), row.Short(round),
                      row.Short(ns),      row.Short(ew),          row.Short(low),
                      row.Short(high),    row.Text(custom)};
      if (!Spend(sizeof played, {&played.CustomBoards})) Fail("RoundData");
      picture_.rounds.push_back(std::move(played));
    };
  });
}

void PictureReader::ReadReceived() {
  ReadTable("ReceivedData", Rows::All, [&](const MdbTable& table) -> Take {
    const auto column = [&](const char* name) { return table.Column(name); };
    return [&, id = column("ID"), section = column("Section"), tableNumber = column("Table"),
            round = column("Round"), board = column("Board"), ns = column("PairNS"),
            ew = column("PairEW"), declarer = column("Declarer"), direction = column("NS/EW"),
            contract = column("Contract"), result = column("Result"), lead = column("LeadCard"),
            remarks = column("Remarks"), date = column("DateLog"), time = column("TimeLog"),
            erased = column("Erased")](const MdbRow& row) {
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
      sent.stamp = DateTime::FromDays(row.Days(date).value_or(0) + row.Days(time).value_or(0))
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

/// A file that is being written, or was patched together from two moments, shows it here.
void PictureReader::CheckAgreement() {
  std::vector<int16_t> ids;
  for (const SectionRow& section : picture_.sections) {
    if (std::find(ids.begin(), ids.end(), section.ID) != ids.end()) Fail("Section");
    ids.push_back(section.ID);
  }
  if (database_.Table("Section") == nullptr) Fail("Section");
  const auto moves = [&](const ResultRow& result) {
    return std::any_of(picture_.rounds.begin(), picture_.rounds.end(),
                       [&](const RoundRow& row) { return row.Section == result.Section; });
  };
  // Results without any movement: the one table was written, the other not yet.
  for (const int16_t id : ids) {
    const auto result = std::find_if(picture_.received.begin(), picture_.received.end(),
                                     [&](const ResultRow& row) { return row.Section == id; });
    if (result != picture_.received.end() && !moves(*result)) Fail("RoundData");
  }
}

}  // namespace

Result<ScoringPicture> ReadScoringPicture(const std::string& bytes) {
  PictureReader reader(bytes);
  const std::string failed = reader.Read();
  if (failed.empty()) return reader.Picture();
  return Error{kUnknownFormat, "Unrecognized database format (" + failed + ")"};
}

}  // namespace corvanel
