
#include <benchmark/benchmark.h>
#include <glib.h>  // before the library, which would include it as C
#include <malloc.h>
#include <mdbtools.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>

#include "scoring/progress.h"
#include "scoring/read_picture.h"
#include "system/scoring_files.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

const fs::path kFriday = fs::path(CORVANEL_FIXTURES) / "friday.bws";
/// A large congress, too large to stand in the tree: "congress.bws" in the folder that the
/// environment variable names.
const fs::path kCongress = [] {
  const char* folder = std::getenv("CORVANEL_MORE_FIXTURES");
  return fs::path(folder == nullptr ? "." : folder) / "congress.bws";
}();

bool Missing(benchmark::State& state, const fs::path& file) {
  if (fs::exists(file)) return false;
  state.SkipWithError((file.filename().string() + " is not here").c_str());
  return true;
}

/// What a poll does with a picture.
void Follow(const PicturePointer& picture) {
  const ScoringSession model(picture, AllSections(*picture));
  const ProgressInput input{3, model.Rounds(), 60, 7, true};
  const RoundProgress progress = ProgressOf(model, input);
  benchmark::DoNotOptimize(GridOf(model, progress, input));
}

/// One poll of a file that has changed: read, model, progress.
void Poll(benchmark::State& state, const fs::path& file) {
  if (Missing(state, file)) return;
  while (state.KeepRunning()) {
    Follow(ReadScoringFile(file.string(), {}).Value().picture);
  }
}
BENCHMARK_CAPTURE(Poll, congress, kCongress)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Poll, friday, kFriday)->Unit(benchmark::kMillisecond);

/// One poll of a file in which one result came or went since the last.
void PollOneResult(benchmark::State& state, const fs::path& file) {
  if (Missing(state, file)) return;
  const ScoringContent whole = ReadScoringFile(file.string(), {}).Value();
  // Without the last result: its page's count of rows is one less.
  std::string without = *whole.bytes;
  const PageRows& last = whole.tables.at("ReceivedData").pages.back();
  --without[last.page * size_t{4096} + 12];
  ScoringContent kept = whole;
  bool less = true;
  while (state.KeepRunning()) {
    state.PauseTiming();
    std::string bytes = less ? without : *whole.bytes;
    state.ResumeTiming();
    kept = ReadScoringContent(std::move(bytes), {}, kept).Value();
    Follow(kept.picture);
    less = !less;
  }
}
BENCHMARK_CAPTURE(PollOneResult, congress, kCongress)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PollOneResult, friday, kFriday)->Unit(benchmark::kMillisecond);

/// The same eight tables read to the end with plain calls of the library: every row, every column.
void PlainLibrary(benchmark::State& state, const fs::path& file) {
  if (Missing(state, file)) return;
  while (state.KeepRunning()) {
    MdbHandle* database = mdb_open(file.c_str(), MDB_NOFLAGS);
    mdb_read_catalog(database, MDB_TABLE);
    for (const char* name : {"Clients", "Session", "Section", "PlayerNumbers", "Settings",
                             "PlayerNames", "RoundData", "ReceivedData"}) {
      MdbTableDef* table = mdb_read_table_by_name(database, const_cast<char*>(name), MDB_TABLE);
      if (table == nullptr) continue;
      mdb_read_columns(table);
      mdb_rewind_table(table);
      std::vector<std::vector<char>> values(table->num_cols, std::vector<char>(MDB_BIND_SIZE));
      for (unsigned i = 0; i < table->num_cols; ++i) {
        mdb_bind_column(table, static_cast<int>(i) + 1, values[i].data(), nullptr);
      }
      while (mdb_fetch_row(table) != 0) benchmark::DoNotOptimize(values);
      mdb_free_tabledef(table);
    }
    mdb_close(database);
  }
}
BENCHMARK_CAPTURE(PlainLibrary, congress, kCongress)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PlainLibrary, friday, kFriday)->Unit(benchmark::kMillisecond);

/// A poll of a file whose bytes are the same as before.
void PollUnchanged(benchmark::State& state) {
  const ScoringContent last = ReadScoringFile(kFriday.string(), {}).Value();
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(ReadScoringFile(kFriday.string(), last));
  }
}
BENCHMARK(PollUnchanged)->Unit(benchmark::kMillisecond);

size_t Allocated() {
  const struct mallinfo2 heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

/// The memory of a picture and its model as a share of the file, and with the bytes that the next
/// poll is compared with.
void Memory(benchmark::State& state, const fs::path& file) {
  if (Missing(state, file)) return;
  const auto size = static_cast<double>(fs::file_size(file));
  while (state.KeepRunning()) {
    const size_t before = Allocated();
    ScoringContent content = ReadScoringFile(file.string(), {}).Value();
    const ScoringSession model(content.picture, AllSections(*content.picture));
    const size_t all = Allocated() - before;
    content.bytes.reset();
    const size_t withoutBytes = Allocated() - before;
    state.counters["of the file"] = static_cast<double>(withoutBytes) / size;
    state.counters["with its bytes"] = static_cast<double>(all) / size;
  }
}
BENCHMARK_CAPTURE(Memory, congress, kCongress)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Memory, friday, kFriday)->Unit(benchmark::kMillisecond);

uint32_t Number(const std::string& bytes, size_t place, size_t width) {
  uint32_t value = 0;
  for (size_t i = width; i-- > 0;) {
    value = value << 8U | static_cast<unsigned char>(bytes[place + i]);
  }
  return value;
}

/// The file with its pages of results so many times, each copy entered in the table's page map.
std::string WithResultsTimes(int64_t times) {
  constexpr size_t kPage = 4096;
  constexpr size_t kMapPointer = 55;  // in a table's definition: row and page of its map
  std::ifstream in(kFriday, std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(in), {});
  std::map<uint32_t, std::vector<size_t>> pages;  // of rows, by table
  std::map<uint32_t, uint32_t> rows;
  for (size_t page = kPage; page < bytes.size(); page += kPage) {
    if (bytes[page] != 1) continue;
    const uint32_t owner = Number(bytes, page + 4, 4);
    pages[owner].push_back(page);
    rows[owner] += Number(bytes, page + 12, 2);
  }
  const size_t results = ReadScoringPicture(bytes).Value().received.size();
  const auto table = std::find_if(rows.begin(), rows.end(),
                                  [&](const auto& entry) { return entry.second == results; });
  const uint32_t pointer = Number(bytes, size_t{table->first} * kPage + kMapPointer, 4);
  const size_t mapPage = (pointer >> 8U) * kPage;
  const size_t map =
      mapPage + (Number(bytes, mapPage + 14 + size_t{2} * (pointer & 0xFFU), 2) & 0x1FFFU);
  // The map of this table names a page of its own, which has a bit for every page of the file.
  const size_t bits = Number(bytes, map + 1, 4) * kPage + 4;
  for (int64_t copy = 1; copy < times; ++copy) {
    for (const size_t page : pages[table->first]) {
      const size_t bit = bytes.size() / kPage;
      bytes[bits + bit / 8] = static_cast<char>(bytes[bits + bit / 8] | 1 << (bit % 8));
      bytes += bytes.substr(page, kPage);
    }
  }
  return bytes;
}

/// Reading, model and progress of so many times the results; the memory of the model beside the
/// picture's.
void Growth(benchmark::State& state) {
  const std::string bytes = WithResultsTimes(state.range(0));
  const auto picture = std::make_shared<ScoringPicture>(ReadScoringPicture(bytes).Value());
  const size_t before = mallinfo2().uordblks;
  const auto model = std::make_unique<ScoringSession>(picture, AllSections(*picture));
  const auto results = static_cast<double>(picture->received.size());
  state.counters["results"] = results;
  state.counters["bytes/result"] = static_cast<double>(mallinfo2().uordblks - before) / results;
  while (state.KeepRunning()) {
    Follow(std::make_shared<ScoringPicture>(ReadScoringPicture(bytes).Value()));
  }
}
BENCHMARK(Growth)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace corvanel
