#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "startup/update_check.h"

namespace corvanel {

/// A server in memory, an installer's file and a splash, with what was done to them.
class FakeUpdates : public UpdateServer, public InstallerFile, public SplashView {
 public:
  bool Connected() override { return connected; }
  std::string DateOf(const std::string& name) override {
    return files.contains(name) ? "20 Nov 2026 10:00:00" : "";
  }
  Result<std::string> Fetch(const std::string& name) override {
    if (failure != 0) return Error{failure, "failed"};
    if (!files.contains(name)) return Error{12007, "not found"};
    return files.at(name);
  }
  Result<int64_t> Begin(const std::string& /*name*/) override {
    if (refused) return Error{12007, "refused"};
    return total;
  }
  Result<std::string> Next() override {
    if (chunks.empty()) return std::string();
    auto chunk = chunks.front();
    chunks.pop_front();
    return chunk;
  }
  bool Create() override {
    written.clear();
    return !folderFull;
  }
  bool Write(const std::string& bytes) override {
    written += bytes;
    return !diskFull;
  }
  Result<std::string> Close() override {
    Sha256 hash;
    hash.Add(tampered.value_or(written));
    return hash.Digits();
  }
  void Remove() override { done += "removed "; }
  Status Start() override {
    if (!runs) return Error{0, "Error trying to download - it is blocked"};
    done += "started ";
    return {};
  }
  std::string Address() const override { return "https://updates/"; }
  void Log(const std::string& line) override { log.push_back(line); }
  void ShowDownload(bool shown) override { done += shown ? "" : "hidden "; }
  void ShowDownloadProgress(const std::string& sizes, const std::string& remaining,
                            int percent) override {
    progress = sizes + remaining + ' ' + std::to_string(percent);
  }
  bool StopWanted() const override { return stop; }

  bool connected = true;
  std::map<std::string, std::string> files = {{"timerversion.txt", "1,5,0\r\nFaster\r\nNicer"}};
  int failure = 0;
  bool refused = false;
  std::deque<Result<std::string>> chunks = {std::string(1000, 'x'), std::string(500, 'y')};
  int64_t total = 1500;
  bool folderFull = false;
  bool diskFull = false;
  bool runs = true;
  bool stop = false;
  std::optional<std::string> tampered;  // what lies in the file when it is read back
  std::string written;
  std::string done;
  std::string progress;
  std::vector<std::string> log;
};

}  // namespace corvanel
