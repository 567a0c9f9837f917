#include "system/json_store.h"

#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "basics/numbers.h"
#include "system/durable_file.h"

namespace corvanel {

namespace fs = std::filesystem;

namespace {

constexpr const char* kCopyMark = ".copy-";
constexpr const char* kOutsideMark = ".outside-";
constexpr const char* kApplication = "Olvendra";
constexpr std::uintmax_t kLargestStore = 64U << 20U;  // bytes; real ones have a few thousand

}  // namespace

/// Takes the values out of a JSON text as they come, so that one cut off half-way still gives what
/// stands before the cut: {"Olvendra": {section: {key: value}}}. What else there is, perhaps of a
/// newer version, is passed over.
class StoreReader : public nlohmann::json_sax<nlohmann::json> {
 public:
  explicit StoreReader(JsonStore& store) : store_(store) {}

  bool null() override { return PassOver(); }
  bool boolean(bool value) override { return Take(value ? "True" : "False"); }
  bool number_integer(number_integer_t value) override { return Take(std::to_string(value)); }
  bool number_unsigned(number_unsigned_t value) override { return Take(std::to_string(value)); }
  bool number_float(number_float_t /*value*/, const string_t& text) override { return Take(text); }
  bool string(string_t& value) override { return Take(value); }
  bool binary(binary_t& /*value*/) override { return PassOver(); }
  bool start_array(std::size_t /*elements*/) override {
    ++passing_;
    return PassOver();
  }
  bool end_array() override {
    --passing_;
    return true;
  }
  bool start_object(std::size_t /*elements*/) override {
    if (passing_ > 0 || depth_ == 3 || (depth_ == 1 && !ours_)) {
      ++passing_;
      return PassOver();
    }
    ++depth_;
    if (depth_ == 3) section_ = key_;
    return true;
  }
  bool end_object() override {
    --(passing_ > 0 ? passing_ : depth_);
    return true;
  }
  bool key(string_t& name) override {
    if (passing_ > 0) return true;
    key_ = name;
    if (depth_ == 1) ours_ = SameName(name, kApplication);
    found_ = found_ || ours_;
    return true;
  }
  bool parse_error(std::size_t position, const std::string& /*token*/,
                   const nlohmann::detail::exception& /*error*/) override {
    fault_ = fmt::format("it cannot be read from byte {} on", position);
    return false;
  }
  /// What was wrong; empty when nothing was.
  std::string Fault() const {
    return found_ || !fault_.empty() ? fault_ : "it is not a settings file of this program";
  }

 private:
  bool Take(const std::string& value) {
    if (depth_ != 3 || passing_ > 0) return PassOver();
    store_.SaveSetting(section_, key_, value);
    return true;
  }
  bool PassOver() {
    if (fault_.empty()) {
      fault_ = fmt::format("it holds what this version does not know (at \"{:.40}\")", key_);
    }
    return true;
  }

  JsonStore& store_;
  int depth_ = 0;    // of objects
  int passing_ = 0;  // depth within what is passed over
  bool ours_ = false;
  bool found_ = false;
  std::string section_;
  std::string key_;
  std::string fault_;
};

/// A link is followed: what it leads to is replaced, not the link.
JsonStore::JsonStore(fs::path file) {
  std::error_code error;
  file_ = fs::weakly_canonical(file, error);
  if (error) file_ = std::move(file);
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
  stamp_ = Stamp();
  std::string fault = "it is far too large";
  try {
    if (!tooLarge) {
      nlohmann::json::sax_parse(stream, &reader);
      fault = reader.Fault();
    }
  } catch (const std::ios_base::failure& failure) {
    fault = failure.what();  // the disk cannot read its own sectors
  }
  if (fault.empty()) return;
  damage_ = fmt::format("The settings file {} cannot be read whole: {}", file_.string(), fault);
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

std::string JsonStore::Stamp() const {
  struct stat status {};
  if (::stat(file_.c_str(), &status) != 0) return {};
  return fmt::format("{}.{} {} {}", status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_size,
                     status.st_ino);
}

/// Somebody else wrote the file since it was last read or written here: what stands there now will
/// be replaced, and is kept.
void JsonStore::KeepOutsideChange() {
  const std::string stamp = Stamp();
  if (stamp.empty() || stamp == stamp_ || damagedFileInPlace_ || !fs::is_regular_file(file_))
    return;
  const fs::path kept = FreeName(kOutsideMark);
  std::error_code error;
  fs::copy_file(file_, kept, error);
  if (error) throw WriteError(kept, error.value());
  outsideChange_ = kept.string();
}

void JsonStore::Flush() {
  std::error_code error;
  const fs::path folder = fs::absolute(file_, error).parent_path();
  fs::create_directories(folder, error);
  fs::path temporary = file_;
  temporary += ".new";
  WriteDurably(temporary, Text());
  KeepOutsideChange();
  KeepDamagedFile();
  RenameDurably(temporary, file_);
  stamp_ = Stamp();
}

void JsonStore::KeepAsDamaged() {
  std::error_code error;
  damagedFileInPlace_ = fs::is_regular_file(file_, error);
}

/// A name beside the file that is not taken. Several within a second get a number each; names sort
/// by age.
fs::path JsonStore::FreeName(const char* mark) const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  fs::path name;
  int number = 0;
  do {
    name = file_;
    name += fmt::format("{}{:%Y-%m-%d-%H%M%S}-{:02}", mark, local, number++);
  } while (fs::exists(name));
  return name;
}

std::string JsonStore::KeepCopy() {
  const fs::path copy = FreeName(kCopyMark);
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
