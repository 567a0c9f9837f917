#include "settings/settings_files.h"

#include <fmt/format.h>
#include <iconv.h>
#include <utf8proc.h>

#include <algorithm>
#include <optional>

#include "session/display_elements.h"
#include "settings/settings_table.h"

namespace corvanel {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
/// A settings file has some tens of thousands of bytes; more is a file of another kind.
constexpr size_t kLargestFile = 8U << 20U;

/// The text in another encoding; nothing when it has characters that the other does not know.
std::optional<std::string> Converted(std::string text, const char* from, const char* to) {
  iconv_t converter = iconv_open(to, from);
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the library's own sign of failure
  if (converter == reinterpret_cast<iconv_t>(-1)) {
    return std::nullopt;
  }
  std::string result(text.size() * 4 + 4, '\0');
  char* in = text.data();
  char* out = result.data();
  size_t inLeft = text.size();
  size_t outLeft = result.size();
  const bool done = iconv(converter, &in, &inLeft, &out, &outLeft) != static_cast<size_t>(-1);
  iconv_close(converter);
  if (!done) return std::nullopt;
  result.resize(result.size() - outLeft);
  return result;
}

bool IsUtf8(const std::string& text) {
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  auto left = static_cast<utf8proc_ssize_t>(text.size());
  while (left > 0) {
    utf8proc_int32_t character = 0;
    const utf8proc_ssize_t length = utf8proc_iterate(at, left, &character);
    if (length <= 0) return false;
    at += length;
    left -= length;
  }
  return true;
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

/// One section's records; a section without keys has none.
std::string ExportReg(const SettingsStore& store, const std::string& section,
                      ExportOutcome& outcome) {
  const KeysAndValues values = store.GetAllSettings(section);
  if (values.empty()) return {};
  std::string text = Quoted('[' + section + ']') + ",0\r\n";
  for (const auto& [key, value] : values) {
    std::string shown = value;
    if (shown.find('"') != std::string::npos) {
      std::replace(shown.begin(), shown.end(), '"', '\'');
      outcome.changed.push_back(fmt::format("{}, {}", section, key));
    }
    text += Quoted(key);
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
  outcome.bytes =
      Converted(text, "UTF-8", "WINDOWS-1252").value_or(std::string(kByteOrderMark) + text);
  return outcome;
}

bool ImportSettings(std::string bytes, SettingsStore& store) {
  // Meant so: cleared before the first record is looked at.
  for (const std::string& section : Sections()) store.DeleteSection(section);
  if (bytes.size() > kLargestFile) return false;
  if (bytes.starts_with(kByteOrderMark)) bytes.erase(0, kByteOrderMark.size());
  if (!IsUtf8(bytes)) {
    const auto converted = Converted(bytes, "WINDOWS-1252", "UTF-8");
    if (!converted) return false;
    bytes = *converted;
  }
  Fields fields(bytes);
  std::optional<std::string> section;
  while (!fields.AtEnd()) {
    const auto first = fields.Next();
    const auto second = fields.Next();
    if (!first || !second) return false;
    if (first->starts_with('[')) {
      // Meant so: the last character goes as the bracket that it should be.
      section = first->size() > 2 ? first->substr(1, first->size() - 2) : std::string();
    } else if (!section) {
      return false;
    } else {
      store.SaveSetting(*section, *first, *second);
    }
  }
  return true;
}

}  // namespace corvanel
