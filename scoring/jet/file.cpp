#include "scoring/jet/file.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>
#include <utility>

namespace corvanel::jet {
namespace {

constexpr Layout kJet3 = {.page = 2048,
                          .rowCount = 8,
                          .columnCount = 25,
                          .indexCount = 31,
                          .map = 35,
                          .indexes = 43,
                          .indexEntry = 8,
                          .columnEntry = 18,
                          .nameLength = 1,
                          .number = 1,
                          .variable = 3,
                          .flags = 13,
                          .fixedOffset = 14,
                          .length = 16,
                          .rowColumns = 1};
constexpr Layout kJet4 = {.page = 4096,
                          .rowCount = 12,
                          .columnCount = 45,
                          .indexCount = 51,
                          .map = 55,
                          .indexes = 63,
                          .indexEntry = 12,
                          .columnEntry = 25,
                          .nameLength = 2,
                          .number = 5,
                          .variable = 7,
                          .flags = 15,
                          .fixedOffset = 21,
                          .length = 23,
                          .rowColumns = 2};

constexpr size_t kMark = 4;
constexpr std::string_view kMarks[] = {"Standard Jet DB", "Standard ACE DB"};
constexpr size_t kVersion = 0x14;
constexpr uint32_t kJet3Version = 0;
constexpr size_t kHidden = 0x18;    // from here on the first page is scrambled
constexpr size_t kCodePage = 0x3C;  // in the scrambled part
constexpr size_t kFewestPages = 3;  // the file's head, its own map, the list of tables
constexpr size_t kMostBytes = 1U << 31U;

/// The first bytes of what the head is scrambled with (RC4, whose key is the same for all files: it
/// hides nothing).
std::array<unsigned char, 64> Scrambling() {
  constexpr std::array<unsigned char, 4> kKey = {0xC7, 0xDA, 0x39, 0x6B};
  std::array<unsigned char, 256> state{};
  std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
  for (size_t i = 0, j = 0; i < state.size(); ++i) {
    j = (j + state[i] + kKey[i % kKey.size()]) % state.size();
    std::swap(state[i], state[j]);
  }
  std::array<unsigned char, 64> stream{};
  size_t i = 0;
  size_t j = 0;
  for (unsigned char& byte : stream) {
    i = (i + 1) % state.size();
    j = (j + state[i]) % state.size();
    std::swap(state[i], state[j]);
    byte = state[static_cast<unsigned char>(state[i] + state[j])];
  }
  return stream;
}

int CodePageOf(const View& head) {
  const auto stream = Scrambling();
  const size_t at = kCodePage - kHidden;
  const uint32_t scrambled = head.Number(kCodePage, 2);
  return static_cast<int>(scrambled ^ (stream[at] | static_cast<uint32_t>(stream[at + 1]) << 8U));
}

}  // namespace

File::File(std::span<const unsigned char> bytes) : bytes_(bytes) {
  const auto marked = [&](std::string_view mark) {
    const View there = bytes_.Part(kMark, mark.size());
    return !there.Empty() && std::equal(mark.begin(), mark.end(), there.Bytes().begin());
  };
  if (std::none_of(std::begin(kMarks), std::end(kMarks), marked)) return;
  jet3_ = bytes_.Number(kVersion, 1) == kJet3Version;
  const Layout& layout = jet3_ ? kJet3 : kJet4;
  if (bytes.size() % layout.page != 0 || bytes.size() / layout.page < kFewestPages ||
      bytes.size() > kMostBytes) {
    return;
  }
  layout_ = &layout;
  pages_ = static_cast<uint32_t>(bytes.size() / layout.page);
  if (!jet3_) return;
  if (const UpperHalf* upper = UpperHalfOf(CodePageOf(bytes_)); upper != nullptr) {
    characters_ = upper;
  }
}

}  // namespace corvanel::jet
