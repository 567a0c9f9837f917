#include "scoring/jet/database.h"

#include "basics/numbers.h"
#include "scoring/jet/usage_map.h"

namespace corvanel::jet {
namespace {

constexpr uint32_t kTableListPage = 2;
constexpr int kTableType = 1;
constexpr uint32_t kPageOfId = 0x00FFFFFF;

/// Where a row that was moved lies now; empty when it is not there.
View MovedRow(const File& file, const View& pointer) {
  const RowPointer to = RowPointer::Of(pointer.Number(0, 4));
  const RowPage page(file, to.page);
  if (pointer.Size() < 4 || to.page == 0 || page.Kind() != PageKind::Rows) return {};
  // There it is marked as deleted, so that nobody finds it twice.
  const Slot slot = page.At(to.row);
  return slot.moved ? View() : slot.bytes;
}

/// Its rows lie from its end to its beginning: without this each one would be waited for.
void FetchAhead(const View& page) {
  constexpr size_t kCacheLine = 64;
  for (size_t at = 0; at < page.Size(); at += kCacheLine) {
    __builtin_prefetch(page.Bytes().data() + at);
  }
}

}  // namespace

std::optional<std::vector<uint32_t>> Table::Pages() const {
  const UsageMap map(file_, definition_.Map());
  if (!Sound() || !map.Sound()) return std::nullopt;
  std::vector<uint32_t> pages;
  for (auto next = map.After(0); next; next = map.After(*next)) {
    const RowPage page(file_, *next);
    // A page beyond the end, or one of zeros.
    if (*next >= file_.Pages() || page.Kind() == PageKind::Unwritten) return std::nullopt;
    // A page of another table's old rows is none of ours.
    if (page.Kind() == PageKind::Rows && page.Owner() == definition_.Page()) pages.push_back(*next);
  }
  return pages;
}

PageRead Table::ReadPage(uint32_t number, const std::function<bool(const Row&)>& take,
                         const WantedRows* wanted) const {
  FetchAhead(file_.Page(number));
  const RowPage page(file_, number);
  PageRead read;
  const auto place = wanted != nullptr ? definition_.PlaceOfLong(wanted->column) : std::nullopt;
  for (uint32_t i = 0; i < page.Rows() && !read.stopped; ++i) {
    const Slot slot = page.At(i);
    if (slot.deleted) continue;
    if (slot.moved) read.itsOwn = false;
    const View bytes = slot.moved ? MovedRow(file_, slot.bytes) : slot.bytes;
    if (place && !wanted->wants(static_cast<int32_t>(bytes.Number(*place, 4)))) continue;
    const Row row(file_, definition_, bytes);
    if (row.Sound()) {
      read.stopped = !take(row);
    } else {
      ++read.leftOut;
    }
  }
  return read;
}

TableRead Table::ForEachRow(const std::function<bool(const Row&)>& take,
                            const WantedRows* wanted) const {
  const auto pages = Pages();
  TableRead read{pages.has_value(), 0};
  if (!pages) return read;
  for (const uint32_t page : *pages) {
    const PageRead rows = ReadPage(page, take, wanted);
    read.leftOut += rows.leftOut;
    if (rows.stopped) break;
  }
  return read;
}

Database::Database(std::span<const unsigned char> bytes)
    : file_(bytes), sound_(file_.Sound() && ReadTableList()) {}

bool Database::ReadTableList() {
  const Table list(file_, kTableListPage);
  const int id = list.Find("Id");
  const int name = list.Find("Name");
  const int type = list.Find("Type");
  if (id < 0 || name < 0 || type < 0) return false;
  const TableRead read = list.ForEachRow([&](const Row& row) {
    if (row.Number(type) != kTableType) return true;
    names_.push_back(row.Text(name));
    pages_.push_back(static_cast<uint32_t>(row.Number(id).value_or(0)) & kPageOfId);
    return true;
  });
  return read.whole;
}

std::optional<Table> Database::Find(std::string_view name) const {
  for (size_t i = 0; i < names_.size(); ++i) {
    if (SameName(names_[i], name)) return std::optional<Table>(std::in_place, file_, pages_[i]);
  }
  return std::nullopt;
}

}  // namespace corvanel::jet
