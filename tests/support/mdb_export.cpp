#include "tests/support/mdb_export.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "basics/numbers.h"

namespace corvanel {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts = {""};
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

}  // namespace

std::string BytesOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<fs::path> EveryScoringFile() {
  std::vector<fs::path> files;
  const char* more = std::getenv("CORVANEL_MORE_FIXTURES");
  for (const fs::path folder : {CORVANEL_FIXTURES, more == nullptr ? CORVANEL_FIXTURES : more}) {
    for (const auto& entry : fs::directory_iterator(folder)) {
      if (entry.path().extension() == ".bws") files.push_back(entry.path());
    }
  }
  return files;
}

bool MdbExportIsThere() {
  return std::system("mdb-export > /dev/null 2>&1") / 256 != 127;
}

Exported Export(const fs::path& file, const std::string& table) {
  const std::string command = "mdb-export -Q -d '\x1f' -R '\x1e' -T '%Y-%m-%dT%H:%M:%S' '" +
                              file.string() + "' '" + table + "' 2>/dev/null";
  std::string output;
  FILE* tool = popen(command.c_str(), "r");
  for (int c = 0; (c = std::fgetc(tool)) != EOF;) output += static_cast<char>(c);
  pclose(tool);
  std::vector<std::string> lines = Split(output, '\x1e');
  lines.pop_back();
  Exported rows;
  if (lines.empty()) return rows;
  std::string header = lines[0];
  for (char& c : header) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const std::vector<std::string> names = Split(header, '\x1f');
  for (size_t i = 1; i < lines.size(); ++i) {
    const std::vector<std::string> values = Split(lines[i], '\x1f');
    auto& row = rows.emplace_back();
    for (size_t n = 0; n < names.size(); ++n) row[names[n]] = Trimmed(values[n]);
  }
  return rows;
}

}  // namespace corvanel
