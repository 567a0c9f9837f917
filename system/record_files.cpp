#include "system/record_files.h"

#include <fmt/format.h>

#include <chrono>
#include <sstream>
#include <system_error>

#include "basics/numbers.h"
#include "system/disk.h"
#include "system/durable_file.h"
#include "system/path_text.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

constexpr int kKept = 3;
constexpr const char* kRecord = "record";
constexpr const char* kAlive = "alive";
constexpr std::chrono::seconds kPatience(3);

fs::path FileOf(const fs::path& file, int age) {
  return age == 0 ? file : WithSuffix(file, fmt::format(".{}", age));
}

/// A power cut at any moment leaves the new record or the one before it, under one of its names.
void Write(const fs::path& file, const std::string& text) {
  const fs::path temporary = WithSuffix(file, ".new");
  WriteDurably(temporary, text);
  std::error_code none;
  for (int age = kKept - 1; age > 0; --age) {
    fs::rename(FileOf(file, age - 1), FileOf(file, age), none);
  }
  RenameDurably(temporary, file);
}

}  // namespace

RecordFiles::RecordFiles(const fs::path& store, DiskWriter& writer)
    : file_(WithSuffix(store, ".session")), alive_(WithSuffix(file_, ".alive")), writer_(writer) {}

void RecordFiles::Keep(const std::string& text) {
  writer_.Do(kRecord, [file = file_, text] { Write(file, text); });
}

void RecordFiles::KeepAlive(const Moment& moment) {
  const std::string text =
      fmt::format("{:20.3f} {:20.3f} {:40}\n", moment.uptime, moment.utc, moment.boot);
  // What cannot be written now is written a second later.
  writer_.Do(kAlive, [file = alive_, text] { WriteInPlace(file, text); });
}

std::string RecordFiles::Failure() const {
  if (writer_.Stuck()) return "the disk is not responding";
  const auto failure = writer_.Failure(kRecord);
  return failure ? failure->what() : "";
}

std::vector<std::string> RecordFiles::Kept() const {
  std::vector<std::string> texts;
  for (int age = 0; age < kKept; ++age) {
    std::error_code error;
    const fs::path file = FileOf(file_, age);
    if (!fs::exists(file, error)) continue;
    const auto text = Disk().ReadFile(PathText(file));
    texts.push_back(text ? text.Value() : "");  // there is one, though it cannot be read
  }
  return texts;
}

std::optional<Moment> RecordFiles::LastAlive() const {
  const auto text = Disk().ReadFile(PathText(alive_));
  if (!text) return std::nullopt;
  std::istringstream words(text.Value());
  Moment moment;
  // The name of the boot is whatever the system says.
  if (!(words >> moment.uptime >> moment.utc) || !std::getline(words, moment.boot)) {
    return std::nullopt;
  }
  moment.boot = std::string(Trimmed(moment.boot));
  return moment;
}

void RecordFiles::Forget() {
  writer_.Drop(kRecord);
  writer_.Drop(kAlive);
  writer_.Do("", [file = file_, alive = alive_] {
    std::error_code none;
    for (int age = 0; age < kKept; ++age) fs::remove(FileOf(file, age), none);
    fs::remove(alive, none);
  });
  writer_.Wait(kPatience);
}

}  // namespace corvanel
