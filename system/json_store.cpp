#include "system/json_store.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <mutex>
#include <nlohmann/json.hpp>

#include "basics/numbers.h"
#include "system/durable_file.h"
#include "system/path_text.h"

namespace corvanel {

namespace fs = std::filesystem;

namespace {

constexpr const char* kCopyMark = ".copy-";
constexpr size_t kMostCopies = 10;
constexpr const char* kOutsideMark = ".outside-";
/// The name that the settings stand under; it does not change with the name of the program.
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

/// The file itself, as the writer works on it.
class JsonStore::File {
 public:
  explicit File(fs::path path) : path_(std::move(path)) {}

  /// What stands there now is what this program knows of.
  void Stamp() { stamp_ = PresentStamp(); }
  /// The next Write keeps the file as it is, beside the new one.
  void KeepAsDamaged() {
    std::error_code error;
    damaged_ = fs::is_regular_file(path_, error);
  }
  std::string OutsideChange() const {
    const std::lock_guard lock(mutex_);
    return outsideChange_;
  }
  void Write(const std::string& text);
  /// A name beside the file that is not taken. Several within a second get a number each; names
  /// sort by age.
  fs::path FreeName(const char* mark) const;
  std::vector<fs::path> Copies() const;

 private:
  std::string PresentStamp() const;
  void KeepOutsideChange();
  void KeepDamagedFile();

  const fs::path path_;
  std::atomic<bool> damaged_ = false;
  std::string stamp_;  // as it was last read or written here
  mutable std::mutex mutex_;
  std::string outsideChange_;  // under the mutex
};

std::string JsonStore::File::PresentStamp() const {
  std::error_code error;
  const auto changed = fs::last_write_time(path_, error);
  if (error) return {};
  return fmt::format("{} {}", changed.time_since_epoch().count(), fs::file_size(path_, error));
}

/// Somebody else wrote the file since it was last read or written here: what stands there now will
/// be replaced, and is kept.
void JsonStore::File::KeepOutsideChange() {
  const std::string stamp = PresentStamp();
  if (stamp.empty() || stamp == stamp_ || damaged_ || !fs::is_regular_file(path_)) return;
  const fs::path kept = FreeName(kOutsideMark);
  std::error_code error;
  fs::copy_file(path_, kept, error);
  if (error) throw WriteError(kept, error);
  const std::lock_guard lock(mutex_);
  outsideChange_ = PathText(kept);
}

void JsonStore::File::KeepDamagedFile() {
  if (!damaged_) return;
  fs::path kept;
  int number = 0;
  do {
    kept = path_;
    kept += fmt::format(".damaged{}", ++number);
  } while (fs::exists(kept));
  std::error_code error;
  fs::rename(path_, kept, error);
  if (error) throw WriteError(kept, error);
  damaged_ = false;
}

void JsonStore::File::Write(const std::string& text) {
  std::error_code error;
  fs::create_directories(fs::absolute(path_, error).parent_path(), error);
  const fs::file_status present = fs::status(path_, error);
  constexpr fs::perms kWrite =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  // A file is replaced by a new one, for which the folder alone matters: who protected it against
  // writing meant it.
  if (fs::exists(present) && (present.permissions() & kWrite) == fs::perms::none) {
    throw WriteError(path_, std::make_error_code(std::errc::permission_denied));
  }
  fs::path temporary = path_;
  temporary += ".new";
  WriteDurably(temporary, text);
  KeepOutsideChange();
  KeepDamagedFile();
  RenameDurably(temporary, path_);
  Stamp();
}

fs::path JsonStore::File::FreeName(const char* mark) const {
  using namespace std::chrono;
  const auto now = system_clock::now();
  const auto milliseconds =
      duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count();
  fs::path name;
  int number = 0;
  do {
    name = path_;
    name +=
        fmt::format("{}{:%Y-%m-%d-%H%M%S}-{:03}-{:02}", mark,
                    fmt::localtime(system_clock::to_time_t(now)), milliseconds % 1000, number++);
  } while (fs::exists(name));
  return name;
}

/// The copies that were kept, the newest last.
std::vector<fs::path> JsonStore::File::Copies() const {
  std::error_code error;
  const std::string mark = PathText(path_.filename()) + kCopyMark;
  std::vector<fs::path> copies;
  for (const auto& entry :
       fs::directory_iterator(fs::absolute(path_, error).parent_path(), error)) {
    if (PathText(entry.path().filename()).starts_with(mark)) copies.push_back(entry.path());
  }
  std::sort(copies.begin(), copies.end());
  return copies;
}

JsonStore::JsonStore(const fs::path& file, DiskWriter& writer)
    : path_(file), writer_(writer), file_(std::make_shared<File>(file)) {
  Read();
}

void JsonStore::Read() {
  std::error_code error;
  const fs::file_status status = fs::status(path_, error);
  if (status.type() == fs::file_type::not_found) return;
  file_->Stamp();
  if (!fs::is_regular_file(status)) {
    damage_ = fmt::format("The settings file {} is not a file", PathText(path_));
    return;
  }
  std::ifstream stream(path_, std::ios::binary);
  if (!stream) {
    damage_ = fmt::format("The settings file {} cannot be read: {}", PathText(path_),
                          std::strerror(errno));
    file_->KeepAsDamaged();
    return;
  }
  StoreReader reader(*this);
  std::string fault = "it is far too large";
  try {
    if (fs::file_size(path_, error) <= kLargestStore) {
      nlohmann::json::sax_parse(stream, &reader);
      fault = reader.Fault();
    }
  } catch (const std::ios_base::failure& failure) {
    fault = failure.what();  // the disk cannot read its own sectors
  }
  if (fault.empty()) return;
  damage_ = fmt::format("The settings file {} cannot be read whole: {}", PathText(path_), fault);
  file_->KeepAsDamaged();
}

std::string JsonStore::OutsideChange() const {
  return file_->OutsideChange();
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
  writer_.Do(kName, [file = file_, text = Text()] { file->Write(text); });
}

void JsonStore::KeepAsDamaged() {
  file_->KeepAsDamaged();
}

std::string JsonStore::KeepCopy() {
  // Shared with the job, which a slow disk does after DoNow has given up.
  const auto copy = std::make_shared<std::string>();
  writer_.DoNow([file = file_, text = Text(), copy, folder = path_.parent_path()] {
    std::error_code error;
    fs::create_directories(folder, error);
    const fs::path name = file->FreeName(kCopyMark);
    WriteDurably(name, text);
    *copy = PathText(name);
    const std::vector<fs::path> copies = file->Copies();
    for (size_t i = 0; i + kMostCopies < copies.size(); ++i) fs::remove(copies[i], error);
  });
  return *copy;
}

bool JsonStore::RestoreCopy() {
  const std::vector<fs::path> copies = file_->Copies();
  if (copies.empty()) return false;
  sections_ = JsonStore(copies.back(), writer_).sections_;
  Flush();
  return true;
}

}  // namespace corvanel
