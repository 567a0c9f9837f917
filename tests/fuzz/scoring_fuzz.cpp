// Throws damaged scoring databases at the reader: corvanel-scoring-fuzz COUNT SEED FILE...
// The files come first as they are: what was found once is kept in findings/. Every further input
// is derived from one of them by a few changes that the seed decides. Exits with 1 when a read took
// longer than it may; a crash leaves its input in "scoring-fuzz-crash.bws".

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "scoring/read_picture.h"

namespace {

using Random = std::mt19937;

// Milliseconds of work, with the sanitizers too; without them a fifth of it is much.
constexpr double kLongestRead = 250;

size_t Below(Random& random, size_t limit) {
  return limit == 0 ? 0 : std::uniform_int_distribution<size_t>(0, limit - 1)(random);
}

/// A place that something depends on: mostly the heads and tails of pages.
size_t Place(Random& random, size_t size, size_t page) {
  const size_t start = Below(random, size / page) * page;
  switch (Below(random, 4)) {
    case 0:
      return start + Below(random, 64);
    case 1:
      return start + Below(random, page / 4);
    case 2:
      return start + page - 1 - Below(random, 256);
    default:
      return start + Below(random, page);
  }
}

void Write(std::string& bytes, size_t place, size_t width, uint32_t value) {
  for (size_t i = 0; i < width && place + i < bytes.size(); ++i) {
    bytes[place + i] = static_cast<char>(value >> (8 * i));
  }
}

uint32_t Read(const std::string& bytes, size_t place) {
  if (place + 2 > bytes.size()) return 0;
  return static_cast<unsigned char>(bytes[place]) |
         static_cast<uint32_t>(static_cast<unsigned char>(bytes[place + 1])) << 8U;
}

/// A place where it hurts: an offset, a count, a flag or a bit that the reader goes by.
size_t SorePlace(Random& random, const std::string& bytes, size_t page) {
  const size_t start = Below(random, bytes.size() / page) * page;
  const size_t count = start + (page == 2048 ? 8 : 12);
  switch (bytes[start]) {
    case 1: {  // rows: their number, where they begin, their first and last bytes
      const size_t rows = Read(bytes, count) % 256;
      const size_t entry = count + 2 + 2 * Below(random, rows + 1);
      const size_t row = start + (Read(bytes, entry) & 0x1FFFU);
      const size_t end =
          entry == count + 2 ? start + page : start + (Read(bytes, entry - 2) & 0x1FFFU);
      const size_t places[] = {count, entry, row + Below(random, 5),
                               end - std::min(end, 1 + Below(random, 24))};
      return places[Below(random, 4)];
    }
    case 2:  // a definition: its head, its columns
      return start + Below(random, Below(random, 2) == 0 ? 64 : 900);
    case 5:  // a map
      return start + Below(random, 40);
    default:
      return start + Below(random, 64);
  }
}

void Change(Random& random, std::string& bytes, size_t page, const std::string& other) {
  constexpr uint32_t kSpecial[] = {0, 1, 0x7F, 0x80, 0xFF, 0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF};
  const size_t pages = bytes.size() / page;
  if (pages == 0) return;
  const bool sore = Below(random, 2) == 0;
  const size_t place = sore ? SorePlace(random, bytes, page) : Place(random, bytes.size(), page);
  switch (Below(random, 7)) {
    case 0:
      Write(bytes, place, 1, static_cast<uint32_t>(random()));
      break;
    case 1:
      Write(bytes, place, 2, static_cast<uint32_t>(random()) & 0xFFFF);
      break;
    case 2:
      Write(bytes, place, size_t{1} << Below(random, 3), kSpecial[Below(random, 9)]);
      break;
    case 3:
      Write(bytes, place, 4, static_cast<uint32_t>(Below(random, pages + 2)));
      break;
    case 4:  // a page from somewhere else
      if (other.size() >= page) {
        bytes.replace(Below(random, pages) * page, page, other,
                      Below(random, other.size() / page) * page, page);
      }
      break;
    case 5:  // not written yet
      bytes.replace(Below(random, pages) * page, page, std::string(page, '\0'));
      break;
    default:
      if (Below(random, 20) == 0) bytes.resize(Below(random, bytes.size()));
      break;
  }
}

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fputs("usage: corvanel-scoring-fuzz COUNT SEED FILE...\n", stderr);
    return 2;
  }
  std::vector<std::string> files;
  for (int i = 3; i < argc; ++i) {
    files.push_back(Bytes(argv[i]));
    static_cast<void>(corvanel::ReadScoringPicture(files.back()));
  }
  Random random(static_cast<Random::result_type>(std::strtoul(argv[2], nullptr, 10)));
  const long count = std::strtol(argv[1], nullptr, 10);
  long read = 0;
  double longest = 0;
  for (long i = 0; i < count; ++i) {
    std::string bytes = files[Below(random, files.size())];
    const size_t page = bytes.size() > 0x14 && bytes[0x14] == 0 ? 2048 : 4096;
    const std::string& other = files[Below(random, files.size())];
    for (size_t n = 1 + Below(random, 8); n > 0; --n) Change(random, bytes, page, other);
    std::ofstream("scoring-fuzz-crash.bws", std::ios::binary) << bytes;
    const std::clock_t start = std::clock();
    read += corvanel::ReadScoringPicture(bytes) ? 1 : 0;
    longest =
        std::max(longest, 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  std::remove("scoring-fuzz-crash.bws");
  fmt::print("{} inputs, {} of them readable, longest read {:.1f} ms\n", count, read, longest);
  return longest <= kLongestRead ? 0 : 1;
}
