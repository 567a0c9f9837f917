#include "settings/settings_files.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>

#include "basics/code_pages.h"
#include "basics/numbers.h"
#include "session/display_elements.h"
#include "settings/settings_table.h"

namespace corvanel {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
/// A settings file has some tens of thousands of bytes; more is a file of another kind.
constexpr size_t kLargestFile = 8U << 20U;

/// The code page of the files.
const UpperHalf& k1252 = *UpperHalfOf(1252);

std::string Utf8Of1252(const std::string& text) {
  std::string utf8;
  for (const char byte : text) {
    const auto code = static_cast<unsigned char>(byte);
    AppendUtf8(utf8, code < 0x80 ? code : k1252[code - 0x80U]);
  }
  return utf8;
}

/// Calls `take` with each character of a text; false when the text is no UTF-8, or `take` says so.
bool EachCharacter(const std::string& text, const std::function<bool(int32_t)>& take) {
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  auto left = static_cast<utf8proc_ssize_t>(text.size());
  while (left > 0) {
    utf8proc_int32_t character = 0;
    const utf8proc_ssize_t length = utf8proc_iterate(at, left, &character);
    if (length <= 0 || !take(character)) return false;
    at += length;
    left -= length;
  }
  return true;
}

/// Nothing when the text has characters that the code page does not know.
std::optional<std::string> In1252(const std::string& text) {
  std::string bytes;
  const bool whole = EachCharacter(text, [&](int32_t character) {
    const auto* place = std::find(k1252.begin(), k1252.end(), character);
    const bool upper = place != k1252.end();
    bytes += static_cast<char>(upper ? 0x80 + (place - k1252.begin()) : character);
    return upper || character < 0x80;
  });
  return whole ? std::optional(bytes) : std::nullopt;
}

/// The sections in the order in which they are written.
std::vector<std::string> Sections() {
  std::vector<std::string> sections;
  for (int entry = 0; entry <= kFavourites; ++entry) sections.push_back(SectionOfSet(entry));
  for (int element = 0; element < kElements; ++element) {
    sections.push_back(SectionOfElement(element));
  }
  return sections;
}

std::string Quoted(std::string text) {
  return '"' + std::move(text) + '"';
}

/// Whether this computer opens itself to its network, and as whom to whom, is for its own director
/// to say, not for a file that came from somebody; and what is secret about it is for nobody else.
bool IsOfThisComputer(const std::string& key) {
  constexpr std::array kKeys = {"NetworkOn", "NetworkRoom", "NetworkBroker",
                                "NetworkBrokerPassword"};
  return std::any_of(kKeys.begin(), kKeys.end(),
                     [&](const char* own) { return SameName(key, own); });
}

/// One section's records; a section without keys has none.
std::string ExportReg(const SettingsStore& store, const std::string& section,
                      ExportOutcome& outcome) {
  const KeysAndValues values = store.GetAllSettings(section);
  if (values.empty()) return {};
  std::string text = Quoted('[' + section + ']') + ",0\r\n";
  for (const auto& [key, value] : values) {
    if (IsOfThisComputer(key)) continue;
    std::string name = key;
    std::string shown = value;
    for (std::string* part : {&name, &shown}) std::replace(part->begin(), part->end(), '"', '\'');
    if (name != key || shown != value) {
      outcome.changed.push_back(fmt::format("{}, {}", section, key));
    }
    text += Quoted(name);
    text += ',';
    text += Quoted(shown);
    text += "\r\n";
  }
  return text;
}

/// Takes fields off a text as the runtime's input statement does: quoted, or bare up to a comma or
/// the end of the line.
class Fields {
 public:
  explicit Fields(std::string_view text) : text_(text) {}

  bool AtEnd() {
    SkipBlanks();
    return text_.empty();
  }

  /// The next field; nothing at the end of the file or within a quote that never closes.
  std::optional<std::string> Next() {
    if (AtEnd()) return std::nullopt;
    std::string field;
    if (text_.front() == '"') {
      const size_t end = text_.find('"', 1);
      if (end == std::string_view::npos) return std::nullopt;
      field = text_.substr(1, end - 1);
      text_.remove_prefix(end + 1);
    } else {
      const size_t end = std::min(text_.find_first_of(",\r\n"), text_.size());
      field = text_.substr(0, end);
      text_.remove_prefix(end);
    }
    SkipSeparator();
    return field;
  }

 private:
  void SkipBlanks() {
    text_.remove_prefix(std::min(text_.find_first_not_of(" \t\r\n"), text_.size()));
  }
  void SkipSeparator() {
    text_.remove_prefix(std::min(text_.find_first_not_of(" \t"), text_.size()));
    if (!text_.empty() && text_.front() == ',') text_.remove_prefix(1);
  }

  std::string_view text_;
};

}  // namespace

ExportOutcome ExportSettings(const SettingsStore& store) {
  ExportOutcome outcome;
  std::string text;
  for (const std::string& section : Sections()) text += ExportReg(store, section, outcome);
  outcome.bytes = In1252(text).value_or(std::string(kByteOrderMark) + text);
  return outcome;
}

std::string AsUtf8(const std::string& text) {
  return EachCharacter(text, [](int32_t) { return true; }) ? text : Utf8Of1252(text);
}

bool ImportSettings(std::string bytes, SettingsStore& store) {
  KeysAndValues own = store.GetAllSettings(SectionOfSet(0));
  std::erase_if(own, [](const auto& setting) { return !IsOfThisComputer(setting.first); });
  // Deliberate: an import replaces, so the store is cleared before the first record is looked at.
  for (const std::string& section : Sections()) store.DeleteSection(section);
  for (const auto& [key, value] : own) store.SaveSetting(SectionOfSet(0), key, value);
  if (bytes.size() > kLargestFile) return false;
  if (bytes.starts_with(kByteOrderMark)) bytes.erase(0, kByteOrderMark.size());
  bytes = AsUtf8(bytes);
  Fields fields(bytes);
  const std::vector<std::string> known = Sections();
  std::optional<std::string> section;
  while (!fields.AtEnd()) {
    const auto first = fields.Next();
    const auto second = fields.Next();
    if (!first || !second) return false;
    if (first->starts_with('[')) {
      // Deliberate: files are read by position; the last character goes, bracket or not.
      section = first->size() > 2 ? first->substr(1, first->size() - 2) : std::string();
    } else if (!section) {
      return false;
    } else if (!IsOfThisComputer(*first) &&
               std::any_of(known.begin(), known.end(),
                           [&](const std::string& name) { return SameName(name, *section); })) {
      // What no later import or reset would take out again is left where it is.
      store.SaveSetting(*section, *first, *second);
    }
  }
  // An empty file, as a copy that broke off leaves one, says nothing.
  return section.has_value();
}

}  // namespace corvanel
