#include "scoring/mdb/mdb_database.h"

#include <cmath>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr uint32_t kTableListPage = 2;
constexpr int kTableType = 1;
constexpr uint32_t kPageOfId = 0x00FFFFFF;
constexpr int kRowDeleted = 0x8000;
constexpr int kRowMoved = 0x4000;
constexpr int kRowStart = 0x1FFF;
constexpr long kMostIndexes = 1000;
constexpr size_t kLongestText = 4096;  // bytes, of a text column in UTF-8

template <class Column>
Column* ColumnAt(const MdbTableDef* table, size_t index) {
  return static_cast<Column*>(g_ptr_array_index(table->columns, index));
}

uint32_t Number32(const unsigned char* bytes) {
  return static_cast<uint32_t>(mdb_get_int32(const_cast<unsigned char*>(bytes), 0));
}

/// Whether the page is a table's definition that the library can read without harm.
bool SoundDefinition(MdbHandle* file, uint32_t page) {
  if (mdb_read_pg(file, page) == 0 || file->pg_buf[0] != MDB_PAGE_TABLE) return false;
  const int columns = mdb_get_int16(file->pg_buf, file->fmt->tab_num_cols_offset);
  const long indexes = mdb_get_int32(file->pg_buf, file->fmt->tab_num_ridxs_offset);
  return columns > 0 && columns <= static_cast<int>(kMostColumns) && indexes >= 0 &&
         indexes <= kMostIndexes;
}

/// Whether every column lies where a row of this file can have it.
bool SoundColumns(const MdbTableDef* table, long pageSize) {
  if (table->columns == nullptr || table->columns->len != table->num_cols) return false;
  for (size_t i = 0; i < table->num_cols; ++i) {
    const auto* column = ColumnAt<MdbColumn>(table, i);
    const auto most = static_cast<int>(kMostColumns);
    if (column == nullptr || column->col_num < 0 || column->col_num > most ||
        column->row_col_num < 0 || column->row_col_num > most || column->col_size < 0 ||
        column->col_size > pageSize) {
      return false;
    }
    // A column of variable length has no offset: older files have anything there.
    const bool inRow = column->is_fixed != 0
                           ? column->fixed_offset >= 0 && column->fixed_offset < pageSize
                           : column->var_col_num <= kMostColumns;
    if (!inRow) return false;
  }
  return true;
}

}  // namespace

bool ReadBudget::Spend(size_t bytes) {
  if (bytes > bytes_ || std::chrono::steady_clock::now() > end_) return false;
  bytes_ -= bytes;
  return true;
}

/// A field that is there, within its page and at least so many bytes long.
const MdbField* MdbRow::Field(int column, int least) const {
  if (column < 0) return nullptr;
  const MdbField& field = fields_[column];
  const bool inPage = field.start > 0 && field.siz >= least &&
                      field.start + field.siz <= static_cast<int>(file_->fmt->pg_size);
  return field.is_null || field.value == nullptr || !inPage ? nullptr : &field;
}

int MdbRow::Type(int column) const {
  return ColumnAt<MdbColumn>(table_, static_cast<size_t>(column))->col_type;
}

std::optional<int32_t> MdbRow::Number(int column) const {
  const MdbField* field = Field(column, 1);
  if (field == nullptr) return std::nullopt;
  void* value = field->value;
  switch (Type(column)) {
    case MDB_BYTE:
      return *static_cast<unsigned char*>(value);
    case MDB_INT:
      if (field->siz < 2) return std::nullopt;
      return static_cast<int16_t>(mdb_get_int16(value, 0));
    case MDB_LONGINT:
      if (field->siz < 4) return std::nullopt;
      return static_cast<int32_t>(mdb_get_int32(value, 0));
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_TEXT: {
      const double number = Type(column) == MDB_TEXT ? Val(Text(column)) : Days(column).value_or(0);
      if (!(std::abs(number) <= 2147483647.0)) return std::nullopt;
      return static_cast<int32_t>(number);
    }
    default:
      return std::nullopt;
  }
}

int16_t MdbRow::Short(int column) const {
  const int32_t number = Number(column).value_or(0);
  return number == static_cast<int16_t>(number) ? static_cast<int16_t>(number) : int16_t{0};
}

std::string MdbRow::Text(int column) const {
  const MdbField* field = Field(column, 1);
  if (field == nullptr || Type(column) != MDB_TEXT) return {};
  std::array<char, kLongestText> text{};
  mdb_unicode2ascii(file_, static_cast<const char*>(field->value), static_cast<size_t>(field->siz),
                    text.data(), text.size());
  text.back() = '\0';
  return std::string(Trimmed(text.data()));
}

std::optional<double> MdbRow::Days(int column) const {
  const MdbField* field = Field(column, 4);
  if (field == nullptr) return std::nullopt;
  if (Type(column) == MDB_FLOAT) return mdb_get_single(field->value, 0);
  if (field->siz < 8) return std::nullopt;
  return mdb_get_double(field->value, 0);
}

bool MdbRow::Flag(int column) const {
  if (column < 0) return false;
  // A yes/no column has no bytes of its own: it is kept as "not null".
  if (Type(column) == MDB_BOOL) return fields_[column].is_null == 0;
  return Number(column).value_or(0) != 0;
}

MdbTable::MdbTable(MdbHandle* file, uint32_t page, uint32_t pages) : file_(file), pages_(pages) {
  if (page == 0 || page >= pages || !SoundDefinition(file, page)) return;
  entry_.mdb = file;
  entry_.object_type = MDB_TABLE;
  entry_.table_pg = page;
  table_ = mdb_read_table(&entry_);
  if (table_ == nullptr) return;
  mdb_read_columns(table_);
  if (SoundColumns(table_, file->fmt->pg_size) && table_->map_sz > 4) return;
  mdb_free_tabledef(table_);
  table_ = nullptr;
}

MdbTable::~MdbTable() {
  if (table_ != nullptr) mdb_free_tabledef(table_);
}

int MdbTable::Column(std::string_view name) const {
  for (size_t i = 0; Sound() && i < table_->num_cols; ++i) {
    if (SameName(ColumnAt<MdbColumn>(table_, i)->name, name)) return static_cast<int>(i);
  }
  return -1;
}

bool MdbTable::ForEachRow(const std::function<bool(const MdbRow&)>& take) {
  if (!Sound()) return false;
  uint32_t page = 0;
  for (;;) {
    const gint32 next =
        mdb_map_find_next(file_, table_->usage_map, static_cast<unsigned>(table_->map_sz), page);
    if (next == 0) return true;
    // A page beyond the end: the file is being copied, or was cut off.
    if (next < 0 || static_cast<uint32_t>(next) <= page || static_cast<uint32_t>(next) >= pages_) {
      return false;
    }
    page = static_cast<uint32_t>(next);
    if (!ReadPage(page, take)) return false;
  }
}

bool MdbTable::ReadPage(uint32_t page, const std::function<bool(const MdbRow&)>& take) {
  if (mdb_read_pg(file_, page) == 0) return false;
  const unsigned char* bytes = file_->pg_buf;
  if (bytes[0] == MDB_PAGE_DB) return false;  // not written yet
  // A page of another table's old rows is none of ours.
  if (bytes[0] != MDB_PAGE_DATA || Number32(bytes + 4) != entry_.table_pg) return true;
  const int rows = mdb_get_int16(file_->pg_buf, file_->fmt->row_count_offset);
  for (int row = 0; row < rows; ++row) {
    if (!ReadRow(page, static_cast<unsigned>(row), take)) return false;
  }
  return true;
}

bool MdbTable::ReadRow(uint32_t page, unsigned row,
                       const std::function<bool(const MdbRow&)>& take) {
  int start = 0;
  size_t size = 0;
  if (mdb_find_row(file_, static_cast<int>(row), &start, &size) != 0) return false;
  if ((start & kRowDeleted) != 0 || size == 0) return true;
  bool moved = false;
  if ((start & kRowMoved) != 0) {
    // Its four bytes say where the row lies now: the row's number, and the page.
    if (size < 4) return false;
    const uint32_t target = Number32(file_->pg_buf + (start & kRowStart));
    if ((target >> 8) == 0 || (target >> 8) >= pages_ || mdb_read_pg(file_, target >> 8) == 0 ||
        file_->pg_buf[0] != MDB_PAGE_DATA ||
        mdb_find_row(file_, static_cast<int>(target & 0xFF), &start, &size) != 0 || size == 0 ||
        (start & kRowMoved) != 0) {
      return false;
    }
    moved = true;
  }
  std::array<MdbField, kMostColumns> fields{};
  if (mdb_crack_row(table_, start & kRowStart, size, fields.data()) < 0) return false;
  if (!take(MdbRow(file_, table_, fields.data()))) return false;
  return !moved || mdb_read_pg(file_, page) != 0;
}

MdbDatabase::MdbDatabase(const std::string& bytes) {
  constexpr size_t kSmallestPage = 2048;
  if (bytes.size() < 3 * kSmallestPage || bytes.size() > 0x7FFFFFFF) return;
  // The library reads the buffer and never writes it.
  file_ = mdb_open_buffer(const_cast<char*>(bytes.data()), bytes.size(), MDB_NOFLAGS);
  if (file_ == nullptr) return;
  const auto pageSize = static_cast<size_t>(file_->fmt->pg_size);
  pages_ = static_cast<uint32_t>(bytes.size() / pageSize);
  sound_ = bytes.size() % pageSize == 0 && ReadTableList();
}

MdbDatabase::~MdbDatabase() {
  if (file_ != nullptr) mdb_close(file_);
}

bool MdbDatabase::ReadTableList() {
  MdbTable list(file_, kTableListPage, pages_);
  const int id = list.Column("Id");
  const int name = list.Column("Name");
  const int type = list.Column("Type");
  return id >= 0 && name >= 0 && type >= 0 && list.ForEachRow([&](const MdbRow& row) {
    if (row.Number(type) != kTableType) return true;
    names_.push_back(row.Text(name));
    tablePages_.push_back(static_cast<uint32_t>(row.Number(id).value_or(0)) & kPageOfId);
    return true;
  });
}

std::unique_ptr<MdbTable> MdbDatabase::Table(std::string_view name) const {
  for (size_t i = 0; i < names_.size(); ++i) {
    if (SameName(names_[i], name)) return std::make_unique<MdbTable>(file_, tablePages_[i], pages_);
  }
  return nullptr;
}

}  // namespace corvanel
