#include "platform/json_store.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "basics/numbers.h"
#include "platform/durable_file.h"

namespace corvanel {

namespace fs = std::filesystem;

namespace {

constexpr const char* kCopyMark = ".copy-";
constexpr const char* kApplication = "Olvendra";
constexpr std::uintmax_t kLargestStore = 64U << 20U;  // bytes; real ones have a few thousand

}  // namespace

/// Takes the values out of a JSON text as they come, so that one cut off half-way still gives what
/// stands before the cut: {"Olvendra": {section: {key: value}}}.
class StoreReader : public nlohmann::json_sax<nlohmann::json> {
 public:
  explicit StoreReader(JsonStore& store) : store_(store) {}

  bool null() override { return Refuse(); }
  bool boolean(bool value) override { return Take(value ? "True" : "False"); }
  bool number_integer(number_integer_t value) override { return Take(std::to_string(value)); }
  bool number_unsigned(number_unsigned_t value) override { return Take(std::to_string(value)); }
  bool number_float(number_float_t /*value*/, const string_t& text) override { return Take(text); }
  bool string(string_t& value) override { return Take(value); }
  bool binary(binary_t& /*value*/) override { return Refuse(); }
  bool start_array(std::size_t /*elements*/) override { return Refuse(); }
  bool end_array() override { return Refuse(); }
  bool start_object(std::size_t /*elements*/) override {
    ++depth_;
    if (depth_ > 3) return Refuse();
    if (depth_ == 3) section_ = key_;
    return true;
  }
  bool end_object() override {
    --depth_;
    return true;
  }
  bool key(string_t& name) override {
    key_ = name;
    if (depth_ == 1 && !SameName(name, kApplication)) return Refuse();
    return true;
  }
  bool parse_error(std::size_t position, const std::string& /*token*/,
                   const nlohmann::detail::exception& /*error*/) override {
    fault_ = fmt::format("it cannot be read from byte {} on", position);
    return false;
  }
  const std::string& Fault() const { return fault_; }

 private:
  bool Take(const std::string& value) {
    if (depth_ != 3) return Refuse();
    store_.SaveSetting(section_, key_, value);
    return true;
  }
  bool Refuse() {
    fault_ = fmt::format("it is not a settings file of this program (at \"{:.40}\")", key_);
    return false;
  }

  JsonStore& store_;
  int depth_ = 0;
  std::string section_;
  std::string key_;
  std::string fault_;
};

JsonStore::JsonStore(fs::path file) : file_(std::move(file)) {
  Read();
}

void JsonStore::Read() {
  std::error_code error;
  const fs::file_status status = fs::status(file_, error);
  if (status.type() == fs::file_type::not_found) return;
  if (!fs::is_regular_file(status)) {
    damage_ = fmt::format("The settings file {} is not a file", file_.string());
    return;
  }
  std::ifstream stream(file_, std::ios::binary);
  if (!stream) {
    damage_ = fmt::format("The settings file {} cannot be read: {}", file_.string(),
                          std::strerror(errno));
    damagedFileInPlace_ = true;
    return;
  }
  StoreReader reader(*this);
  const bool tooLarge = fs::file_size(file_, error) > kLargestStore;
  if (!tooLarge && nlohmann::json::sax_parse(stream, &reader)) return;
  damage_ = fmt::format("The settings file {} is damaged: {}", file_.string(),
                        tooLarge ? "it is far too large" : reader.Fault());
  damagedFileInPlace_ = true;
}

const JsonStore::Section* JsonStore::Find(std::string_view section) const {
  const auto found = std::find_if(sections_.begin(), sections_.end(),
                                  [&](const Section& s) { return SameName(s.name, section); });
  return found == sections_.end() ? nullptr : &*found;
}

std::optional<std::string> JsonStore::GetSetting(std::string_view section,
                                                 std::string_view key) const {
  if (const Section* found = Find(section)) {
    for (const auto& [name, value] : found->values) {
      if (SameName(name, key)) return value;
    }
  }
  return std::nullopt;
}

KeysAndValues JsonStore::GetAllSettings(std::string_view section) const {
  const Section* found = Find(section);
  return found == nullptr ? KeysAndValues{} : found->values;
}

void JsonStore::SaveSetting(std::string_view section, std::string_view key,
                            std::string_view value) {
  auto* found = const_cast<Section*>(Find(section));
  if (found == nullptr) found = &sections_.emplace_back(Section{std::string(section), {}});
  for (auto& [name, present] : found->values) {
    if (SameName(name, key)) {
      present = value;
      return;
    }
  }
  found->values.emplace_back(key, value);
}

void JsonStore::DeleteSection(std::string_view section) {
  std::erase_if(sections_, [&](const Section& s) { return SameName(s.name, section); });
}

std::string JsonStore::Text() const {
  nlohmann::ordered_json sections = nlohmann::ordered_json::object();
  for (const Section& section : sections_) {
    nlohmann::ordered_json& values = sections[section.name];
    values = nlohmann::ordered_json::object();
    for (const auto& [key, value] : section.values) values[key] = value;
  }
  const nlohmann::ordered_json all = {{kApplication, sections}};
  return all.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

void JsonStore::Flush() {
  std::error_code error;
  const fs::path folder = fs::absolute(file_, error).parent_path();
  fs::create_directories(folder, error);
  fs::path temporary = file_;
  temporary += ".new";
  WriteDurably(temporary, Text());
  KeepDamagedFile();
  RenameDurably(temporary, file_);
}

void JsonStore::KeepAsDamaged() {
  std::error_code error;
  damagedFileInPlace_ = fs::is_regular_file(file_, error);
}

std::string JsonStore::KeepCopy() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  fs::path copy;
  int number = 0;
  // Several within a second get a number each; names sort by age.
  do {
    copy = file_;
    copy += fmt::format("{}{:%Y-%m-%d-%H%M%S}-{:02}", kCopyMark, local, number++);
  } while (fs::exists(copy));
  std::error_code error;
  fs::create_directories(fs::absolute(file_, error).parent_path(), error);
  WriteDurably(copy, Text());
  return copy.string();
}

fs::path JsonStore::NewestCopy() const {
  std::error_code error;
  const std::string mark = file_.filename().string() + kCopyMark;
  fs::path newest;
  for (const auto& entry :
       fs::directory_iterator(fs::absolute(file_, error).parent_path(), error)) {
    const fs::path& path = entry.path();
    if (path.filename().string().starts_with(mark) && path.filename() > newest.filename())
      newest = path;
  }
  return newest;
}

bool JsonStore::RestoreCopy() {
  const fs::path copy = NewestCopy();
  if (copy.empty()) return false;
  JsonStore kept(copy);
  sections_ = kept.sections_;
  Flush();
  return true;
}

void JsonStore::KeepDamagedFile() {
  if (!damagedFileInPlace_) return;
  fs::path kept;
  int number = 0;
  do {
    kept = file_;
    kept += fmt::format(".damaged{}", ++number);
  } while (fs::exists(kept));
  if (::rename(file_.c_str(), kept.c_str()) != 0) throw WriteError(kept, errno);
  damagedFileInPlace_ = false;
}

}  // namespace corvanel
