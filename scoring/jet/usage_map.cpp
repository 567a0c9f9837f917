#include "scoring/jet/usage_map.h"

#include <algorithm>
#include <bit>

namespace corvanel::jet {
namespace {

constexpr size_t kBits = 5;       // where they begin beside the head of a map
constexpr size_t kMapPages = 1;   // where the numbers of its pages begin
constexpr size_t kPageBits = 4;   // where the bits begin on such a page
constexpr uint32_t kInPlace = 0;  // kinds of maps
constexpr uint32_t kOnPages = 1;

/// The first set bit from `from` on.
std::optional<size_t> FirstBit(const View& bits, size_t from) {
  for (size_t byte = from / 8; byte < bits.Size(); ++byte) {
    uint32_t there = bits.Number(byte, 1);
    if (byte == from / 8) there &= 0xFFU << (from % 8) & 0xFFU;
    if (there != 0) return byte * 8 + static_cast<size_t>(std::countr_zero(there));
    while (bits.Holds(byte + 1, 4) && bits.Number(byte + 1, 4) == 0) byte += 4;
  }
  return std::nullopt;
}

}  // namespace

UsageMap::UsageMap(const File& file, RowPointer place) : file_(file) {
  const RowPage page(file, place.page);
  if (page.Kind() == PageKind::Rows) map_ = page.At(place.row).bytes;
  if (map_.Size() < kBits || map_.Number(0, 1) > kOnPages || !HasItsPages()) map_ = View();
}

uint32_t UsageMap::MapPage(size_t index) const {
  return map_.Number(kMapPages + 4 * index, 4);
}

bool UsageMap::HasItsPages() const {
  if (map_.Number(0, 1) == kInPlace) return true;
  for (size_t i = 0; map_.Holds(kMapPages + 4 * i, 4); ++i) {
    if (MapPage(i) != 0 && KindOf(file_.Page(MapPage(i))) != PageKind::Map) return false;
  }
  return true;
}

std::optional<uint32_t> UsageMap::After(uint32_t page) const {
  const size_t from = size_t{page} + 1;
  if (map_.Number(0, 1) == kInPlace) {
    const size_t first = map_.Number(1, 4);
    const auto bit = FirstBit(map_.From(kBits), from > first ? from - first : 0);
    if (!bit) return std::nullopt;
    return static_cast<uint32_t>(first + *bit);
  }
  const size_t bitsOfPage = (file_.TheLayout().page - kPageBits) * 8;
  for (size_t i = from / bitsOfPage; map_.Holds(kMapPages + 4 * i, 4); ++i) {
    if (MapPage(i) == 0) continue;
    const View bits = file_.Page(MapPage(i));
    const size_t first = i * bitsOfPage;
    const auto bit = FirstBit(bits.From(kPageBits), from > first ? from - first : 0);
    if (bit) return static_cast<uint32_t>(first + *bit);
  }
  return std::nullopt;
}

}  // namespace corvanel::jet
