#include "scoring/read_picture.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>
#include <unordered_map>

#include "basics/numbers.h"
#include "scoring/jet/database.h"

namespace corvanel {
namespace {

constexpr size_t kBudgetPerByte = 8;  // bytes of memory for each of the file
constexpr size_t kMoreRows = 64;      // that a table may have gained since the last look
constexpr size_t kCostOfRow = 16;     // of looking at one, as if it were memory
/// The tables that play is followed by. Of the others a damaged one is left out.
constexpr std::string_view kNeeded[] = {"Section", "RoundData", "ReceivedData"};
constexpr uint32_t kLastBits = 0xFFFF;  // of a member's number
constexpr const char* kSeats = "PlayerNumbers";
constexpr const char* kNames = "PlayerNames";
constexpr const char* kOfNames[] = {kSeats, kNames};
constexpr int kUnknownFormat = 3343;  // the database engine's "unrecognized database format"

/// The day of the one and the time of day of the other: some programs put both into both.
std::optional<DateTime> MomentOf(double date, double time) {
  return DateTime::FromDays(std::floor(date) + (time - std::floor(time)));
}

/// Reads the tables one by one; the first that fails ends it.
class PictureReader {
 public:
  PictureReader(std::span<const unsigned char> bytes, const ScoringContent& last)
      : database_(bytes), last_(last), budget_(kBudgetPerByte * bytes.size()) {}

  /// The table that could not be read; empty when all went well.
  std::string Read();
  ScoringPicture& Picture() { return picture_; }
  PagedTables& Tables() { return tables_; }

 private:
  enum class Rows { All, First };

  /// Opens a table, lets `prepare` find its columns, and hands its rows to what that returns. A
  /// table that is not there has no rows.
  template <class Prepare>
  void ReadTable(const char* name, Rows rows, Prepare prepare);
  /// The same for a table that grows: pages that are as they were are not looked into again.
  /// `prepare` gives what fills an entry of `list` from a row.
  template <class RowType, class Prepare>
  void ReadRows(const char* name, std::vector<RowType> ScoringPicture::*list, Prepare prepare);
  /// What the table had on that page, when it still has that there; else null.
  const PageRows* Kept(const char* name, const jet::Table& table, uint32_t page) const;
  bool SamePage(uint32_t page) const;
  bool SameNames() const;
  /// Takes memory off the budget: a hostile file can make few bytes look like many rows. False when
  /// it is spent.
  bool Spend(size_t bytes);
  void FindUnit();
  void ReadSessionRow();
  void ReadSections();
  void ReadPlayers();
  void ReadNames();
  void ReadRounds();
  void ReadReceived();
  void CheckSections();
  /// A table that is not whole: fails when play is followed by it.
  void LeaveOut(const char* name);
  void CountWhatIsLeftOut(const char* name, const jet::TableRead& read);
  void Fail(const char* table) {
    if (failed_.empty()) failed_ = table;
  }

  jet::Database database_;
  const ScoringContent& last_;
  size_t budget_;  // bytes of memory that may still be taken
  ScoringPicture picture_;
  PagedTables tables_;
  std::string failed_;
};

jet::View ViewOf(const std::string& bytes) {
  return jet::View({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

size_t TextsOf(const PlayerRow& row) {
  return row.Direction.size() + row.Number.size() + row.Name.size();
}

size_t TextsOf(const RoundRow& row) {
  return row.CustomBoards.size();
}

size_t TextsOf(const ResultRow& row) {
  return row.NS_EW.size() + row.Contract.size() + row.Result.size() + row.LeadCard.size() +
         row.Remarks.size();
}

template <class Prepare>
void PictureReader::ReadTable(const char* name, Rows rows, Prepare prepare) {
  const auto table = failed_.empty() ? database_.Find(name) : std::nullopt;
  if (!table) return;
  const auto take = prepare(*table);
  const jet::TableRead read = table->ForEachRow([&](const jet::Row& row) {
    take(row);
    if (!Spend(kCostOfRow)) Fail(name);
    return rows == Rows::All && failed_.empty();
  });
  CountWhatIsLeftOut(name, read);
}

void PictureReader::CountWhatIsLeftOut(const char* name, const jet::TableRead& read) {
  picture_.rowsLeftOut += static_cast<int>(read.leftOut);
  if (!read.whole) LeaveOut(name);
}

void PictureReader::LeaveOut(const char* name) {
  if (std::find(std::begin(kNeeded), std::end(kNeeded), name) != std::end(kNeeded)) {
    Fail(name);
  } else {
    picture_.tablesLeftOut.emplace_back(name);
  }
}

bool PictureReader::SamePage(uint32_t page) const {
  const size_t size = database_.TheFile().TheLayout().page;
  const auto before = ViewOf(*last_.bytes).Part(page * size, size).Bytes();
  const auto now = database_.TheFile().Page(page).Bytes();
  return now.size() == before.size() && std::memcmp(now.data(), before.data(), now.size()) == 0;
}

const PageRows* PictureReader::Kept(const char* name, const jet::Table& table,
                                    uint32_t page) const {
  const auto before = last_.tables.find(name);
  if (before == last_.tables.end() || before->second.columns != table.Columns()) return nullptr;
  // Seats hold the names that were put to them.
  if (last_.picture->nameSource != picture_.nameSource) return nullptr;
  const std::vector<PageRows>& pages = before->second.pages;
  const auto part = std::lower_bound(pages.begin(), pages.end(), page,
                                     [](const PageRows& p, uint32_t n) { return p.page < n; });
  const bool same = part != pages.end() && part->page == page && part->kept && SamePage(page);
  return same ? &*part : nullptr;
}

template <class RowType, class Prepare>
void PictureReader::ReadRows(const char* name, std::vector<RowType> ScoringPicture::*list,
                             Prepare prepare) {
  const auto table = failed_.empty() ? database_.Find(name) : std::nullopt;
  if (!table) return;
  const auto pages = table->Pages();
  if (!pages) return LeaveOut(name);
  const auto fill = prepare(*table);
  std::vector<RowType>& rows = picture_.*list;
  PagedTable& now = tables_[name];
  now.columns = table->Columns();
  if (last_.picture) rows.reserve(((*last_.picture).*list).size() + kMoreRows);
  const auto take = [&](const jet::Row& row) {
    fill(row, rows.emplace_back());
    if (!Spend(kCostOfRow + sizeof(RowType) + TextsOf(rows.back()))) Fail(name);
    return failed_.empty();
  };
  for (const uint32_t page : *pages) {
    PageRows part{page, rows.size(), 0, true};
    if (const PageRows* old = Kept(name, *table, page); old != nullptr) {
      const auto first = ((*last_.picture).*list).begin() + static_cast<ptrdiff_t>(old->first);
      rows.insert(rows.end(), first, first + static_cast<ptrdiff_t>(old->count));
    } else {
      const jet::PageRead read = table->ReadPage(page, take);
      picture_.rowsLeftOut += static_cast<int>(read.leftOut);
      part.kept = read.itsOwn && read.leftOut == 0;
    }
    part.count = rows.size() - part.first;
    // The others will hold about as many.
    if (now.pages.empty() && !last_.picture) {
      rows.reserve(std::min(part.count * pages->size() + kMoreRows, budget_ / sizeof(RowType)));
    }
    now.pages.push_back(part);
  }
}

bool PictureReader::Spend(size_t bytes) {
  if (bytes > budget_) return false;
  budget_ -= bytes;
  return true;
}

std::string PictureReader::Read() {
  if (!database_.Sound()) return "the list of its tables";
  picture_.format = database_.TheFile().IsJet3() ? "Jet3" : "Jet4";
  FindUnit();
  ReadTable("Clients", Rows::First, [&](const jet::Table& table) {
    return [&, computer = table.Find("Computer")](const jet::Row& row) {
      picture_.computer = row.Text(computer);
    };
  });
  ReadSessionRow();
  ReadSections();
  ReadTable("Settings", Rows::First, [&](const jet::Table& table) {
    return [&, source = table.Find("BM2NameSource")](const jet::Row& row) {
      if (row.Number(source)) picture_.nameSource = row.Short(source);
    };
  });
  ReadPlayers();
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
  ReadTable(events ? "Events" : "Session", Rows::First, [&](const jet::Table& table) {
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
  ReadTable("Section", Rows::All, [&](const jet::Table& table) {
    return [&, id = table.Find("ID"), letter = table.Find("Letter"), tables = table.Find("Tables"),
            missing = table.Find("MissingPair"),
            move = table.Find("EWMoveBeforePlay")](const jet::Row& row) {
      SectionRow section{row.Short(id), row.Text(letter), row.Short(tables), row.Short(missing),
                         row.Short(move)};
      if (!Spend(sizeof section + section.letter.size())) Fail("Section");
      picture_.sections.push_back(std::move(section));
    };
  });
}

void PictureReader::ReadPlayers() {
  ReadRows(kSeats, &ScoringPicture::players, [](const jet::Table& table) {
    return [section = table.Find("Section"), tableNumber = table.Find("Table"),
            direction = table.Find("Direction"), number = table.Find("Number"),
            name = table.Find("Name")](const jet::Row& row, PlayerRow& seat) {
      seat = {row.Short(section), row.Short(tableNumber), row.Text(direction), row.Text(number),
              row.Text(name)};
    };
  });
}

/// Whether seats and member list are as they were: then so are the names.
bool PictureReader::SameNames() const {
  if (!last_.picture || last_.picture->nameSource != picture_.nameSource) return false;
  return std::all_of(std::begin(kOfNames), std::end(kOfNames), [&](const char* name) {
    const auto now = tables_.find(name);
    const auto before = last_.tables.find(name);
    return now != tables_.end() && before != last_.tables.end() &&
           now->second.columns == before->second.columns &&
           now->second.pages == before->second.pages &&
           std::all_of(now->second.pages.begin(), now->second.pages.end(),
                       [&](const PageRows& part) { return part.kept && SamePage(part.page); });
  });
}

/// Puts the club's names to the seats: the wanted numbers first, then one pass through the list,
/// of which only the wanted names are converted. A number that is not listed has no name.
void PictureReader::ReadNames() {
  const auto list = database_.Find(kNames);
  if (const auto pages = list ? list->Pages() : std::nullopt; pages) {
    PagedTable& now = tables_[kNames];
    now.columns = list->Columns();
    for (const uint32_t page : *pages) now.pages.push_back({page, 0, 0, true});
    if (SameNames()) {
      picture_.players = last_.picture->players;
      return;
    }
  }
  std::unordered_map<int32_t, std::optional<std::string>> wanted;
  // Of tens of thousands of members few have a seat: most numbers are told apart by their last
  // bits.
  std::vector<bool> seated(kLastBits + 1);
  for (const PlayerRow& seat : picture_.players) {
    const double number = Val(seat.Number);
    if (!(number > 0 && number <= INT32_MAX)) continue;
    wanted[static_cast<int32_t>(number)];
    seated[static_cast<uint32_t>(number) & kLastBits] = true;
  }
  if (list && failed_.empty()) {
    const int id = list->Find("ID");
    const int name = list->Find("Name");
    const auto take = [&](const jet::Row& row) {
      const auto seat = wanted.find(row.Number(id).value_or(0));
      if (seat == wanted.end() || seat->second) return true;
      seat->second = row.Text(name);
      if (!Spend(seat->second->size())) Fail(kNames);
      return failed_.empty();
    };
    const jet::WantedRows seats{
        id, [&](int32_t number) { return seated[static_cast<uint32_t>(number) & kLastBits]; }};
    CountWhatIsLeftOut(kNames, list->ForEachRow(take, &seats));
  }
  for (PlayerRow& seat : picture_.players) {
    const double number = Val(seat.Number);
    if (number <= 0) continue;
    const auto found = wanted.find(static_cast<int32_t>(std::min<double>(number, INT32_MAX)));
    seat.Name = found == wanted.end() ? "" : found->second.value_or("");
    if (!Spend(seat.Name.size())) Fail(kNames);
  }
}

void PictureReader::ReadRounds() {
  ReadRows("RoundData", &ScoringPicture::rounds, [](const jet::Table& table) {
    return [section = table.Find("Section"), tableNumber = table.Find("Table"),
            round = table.Find("Round"), ns = table.Find("NSPair"), ew = table.Find("EWPair"),
            low = table.Find("LowBoard"), high = table.Find("HighBoard"),
            custom = table.Find("CustomBoards")](const jet::Row& row, RoundRow& played) {
      played = {row.Short(section), row.Short(tableNumber), row.Short(round), row.Short(ns),
                row.Short(ew),      row.Short(low),         row.Short(high),  row.Text(custom)};
    };
  });
}

void PictureReader::ReadReceived() {
  ReadRows("ReceivedData", &ScoringPicture::received, [](const jet::Table& table) {
    const auto column = [&](const char* name) { return table.Find(name); };
    return [id = column("ID"), section = column("Section"), tableNumber = column("Table"),
            round = column("Round"), board = column("Board"), ns = column("PairNS"),
            ew = column("PairEW"), declarer = column("Declarer"), direction = column("NS/EW"),
            contract = column("Contract"), result = column("Result"), lead = column("LeadCard"),
            remarks = column("Remarks"), date = column("DateLog"), time = column("TimeLog"),
            erased = column("Erased")](const jet::Row& row, ResultRow& sent) {
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
      sent.stamp =
          MomentOf(row.Days(date).value_or(0), row.Days(time).value_or(0)).value_or(DateTime());
      sent.Erased = row.Flag(erased) ? int16_t{-1} : int16_t{0};
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

Result<ScoringContent> ReadScoringContent(std::string bytes, DateTime modified,
                                          const ScoringContent& last) {
  ScoringContent content{std::make_shared<const std::string>(std::move(bytes)), nullptr, {}};
  PictureReader reader(ViewOf(*content.bytes).Bytes(), last);
  const std::string failed = reader.Read();
  if (!failed.empty()) {
    return Error{kUnknownFormat, "Unrecognized database format (" + failed + ")"};
  }
  reader.Picture().fileDate = modified;
  content.picture = std::make_shared<const ScoringPicture>(std::move(reader.Picture()));
  content.tables = std::move(reader.Tables());
  return content;
}

Result<ScoringPicture> ReadScoringPicture(const std::string& bytes) {
  const auto content = ReadScoringContent(bytes, {}, {});
  if (!content) return content.Failure();
  return *content.Value().picture;
}

}  // namespace corvanel
