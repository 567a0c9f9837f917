#include "startup/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "startup/standard_settings.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A server in memory, and everything around it.
class StartUpTest : public testing::Test,
                    public UpdateServer,
                    public InstallerFile,
                    public SplashView {
 protected:
  bool Connected() override { return connected; }
  std::string DateOf(const std::string& name) override {
    return files.contains(name) ? "20 Nov 2026 10:00:00" : "";
  }
  Result<std::string> Fetch(const std::string& name) override {
    if (failure != 0) return Error{failure, "failed"};
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
  bool Create() override { return true; }
  bool Write(const std::string& bytes) override {
    written += bytes;
    return !diskFull;
  }
  bool Close() override { return true; }
  std::string Sha256() const override { return std::string(64, 'a'); }
  void Remove() override { done += "removed "; }
  bool CanStart() const override { return runs; }
  void Start() override { done += "started "; }
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
  bool diskFull = false;
  bool runs = true;
  bool stop = false;
  std::string written;
  std::string kept;
  std::string done;
  std::string progress;
  std::vector<std::string> log;
  FakePrompts prompts;
  FakeStore store;
  FakeErrors errors;
  VirtualTime time{ClockTime::At(19, 0)};
  Version version{1, 4, 2};
  UpdateCheck update{{*this, *this, *this, prompts, time, version,
                      [this](const std::string& bytes) { kept = bytes; }}};

  StartUp start{{store, *this, update, prompts, errors, version}};
};

TEST(UpdateFileTest, NotesOfAnyEncodingAreRead) {
  EXPECT_EQ(ParseVersionFile("1,5,0\r\nsch\xF6n")->notes, "sch\xC3\xB6n");
  EXPECT_EQ(ParseVersionFile("\xEF\xBB\xBF"
                             "1,5,0\nsch\xC3\xB6n")
                ->notes,
            "sch\xC3\xB6n");
}

TEST_F(StartUpTest, TheCheckTellsWhatItFound) {
  const std::vector<std::string> begin = {"Checking internet", "- connected",
                                          "- contacting Corvanel website"};
  const auto lines = [&](std::vector<std::string> more) {
    more.insert(more.begin(), begin.begin(), begin.end());
    return more;
  };
  EXPECT_FALSE(update.Run());  // the offer is declined
  EXPECT_EQ(kept, files["timerversion.txt"]);
  EXPECT_EQ(log, lines({"Checking for updates", "Version 1.5.0 is available for download"}));
  EXPECT_EQ(prompts.texts.back(),
            "Version 1.5.0 is available for download\r\nFaster\r\nNicer\r\n\r\n"
            "Do you want to download and install the update?");
  struct Row {
    const char* file;
    std::vector<std::string> end;
  };
  const Row rows[] = {
      {"1,4,2", {"Checking for updates", "Your version of Corvanel is up-to-date"}},
      {"1,4,1\nold", {"Checking for updates", "Your version of Corvanel is up-to-date"}},
      {"", {"Update information could not be found"}},
      {"<html>", {"Update information could not be found"}},
      {"1,2", {"Update information could not be found"}},
      {"1,-2,3", {"Update information could not be found"}},
      {"99999999999999999999,1,1", {"Update information could not be found"}},
  };
  for (const Row& row : rows) {
    log.clear();
    files["timerversion.txt"] = row.file;
    EXPECT_FALSE(update.Run());
    EXPECT_EQ(log, lines(row.end)) << row.file;
  }
  log.clear();
  failure = 12007;
  update.Run();
  EXPECT_EQ(log, lines({"- can't access Corvanel website at present2EE7",
                        "Update information could not be found"}));
  log.clear();
  files.clear();
  update.Run();
  EXPECT_EQ(log, lines({"- can't access Corvanel website at present"}));
  log.clear();
  connected = false;
  update.Run();
  EXPECT_THAT(log, ElementsAre("Checking internet", "- not connected"));
}

TEST_F(StartUpTest, OnlyAWholeInstallerIsStarted) {
  prompts.answers = {Answer::Yes};
  EXPECT_TRUE(update.Run());
  EXPECT_EQ(written.size(), 1500U);
  EXPECT_EQ(prompts.texts.back(), "Corvanel will now close whilst the update is installed");
  EXPECT_EQ(done, "hidden started ");
  EXPECT_EQ(progress, "1 kb of 1 kb - 0 secs remaining 100");
  struct Row {
    const char* name;
    std::function<void()> spoil;
    const char* message;
  };
  const Row rows[] = {
      {"no such file", [&] { refused = true; }, "Error trying to download - refused"},
      {"cut off", [&] { chunks.pop_back(); }, "Connection to the internet has been lost"},
      {"lost",
       [&] {
         chunks[1] = Error{2, "reset"};
       },
       "Connection to the internet has been lost"},
      {"too long", [&] { total = 1400; }, "Error trying to download - it is larger than announced"},
      {"no length", [&] { total = -1; },
       "Error trying to download - the server did not say how long the file is"},
      {"disk full", [&] { diskFull = true; }, "Error trying to download - the disk is full"},
      {"stopped", [&] { stop = true; }, "Download was stopped"},
      {"another checksum", [&] { files["corvanelsetup.exe.sha256"] = std::string(64, 'b'); },
       "Error trying to download - the file is not what the server has"},
  };
  for (const Row& row : rows) {
    refused = diskFull = stop = false;
    total = 1500;
    chunks = {std::string(1000, 'x'), std::string(500, 'y')};
    files.erase("corvanelsetup.exe.sha256");
    row.spoil();
    done.clear();
    prompts.answers = {Answer::Yes};
    EXPECT_FALSE(update.Run()) << row.name;
    EXPECT_EQ(prompts.texts.back(), row.message) << row.name;
    EXPECT_EQ(done, stop ? "hidden " : "hidden removed ") << row.name;
    EXPECT_EQ(log.back(), "Download failed");
  }
  files["corvanelsetup.exe.sha256"] = std::string(64, 'A') + "  corvanelsetup.exe\n";
  chunks = {std::string(1000, 'x'), std::string(500, 'y')};
  prompts.answers = {Answer::Yes};
  EXPECT_TRUE(update.Run());
}

TEST_F(StartUpTest, WhatThisSystemCannotInstallIsOnlyTold) {
  runs = false;
  prompts.answers = {Answer::Yes};
  files["timerversion.txt"] =
      "\xEF\xBB\xBF"
      "1,5,0\nFaster";
  EXPECT_FALSE(update.Run());
  EXPECT_EQ(prompts.texts.back(),
            "Version 1.5.0 is available for download\r\nFaster\r\n\r\nIt is at https://updates/");
  EXPECT_EQ(written, "");
}

TEST(SizeTextTest, KilobytesAndMegabytes) {
  EXPECT_EQ(SizeText(900 * 1024), "900 kb");
  EXPECT_EQ(SizeText(1023.4 * 1024), "1023 kb");
  EXPECT_EQ(SizeText(1536 * 1024), "1.5 mb");
}

TEST_F(StartUpTest, WhatIsNewIsToldOncePerVersion) {
  connected = false;
  prompts.answers = {Answer::Yes};
  EXPECT_EQ(start.Run(), StartUp::End::Wait);
  EXPECT_THAT(prompts.texts.back(), HasSubstr("(on page 2)\r\nCorvanel can now link"));
  EXPECT_EQ(store.GetSetting("Timer", "ShowMessage"), std::nullopt);
  prompts.answers = {Answer::No};
  start.Run();
  EXPECT_EQ(store.GetSetting("Timer", "ShowMessage"), "10402");
  const size_t told = prompts.texts.size();
  start.Run();
  EXPECT_EQ(prompts.texts.size(), told);
}

TEST_F(StartUpTest, TheUnitIsAskedForOnlyWhereTheLinkWasStoredOn) {
  connected = false;
  prompts.answers = {Answer::No};
  start.Run();
  EXPECT_EQ(prompts.texts.size(), 1U);
  store.SaveSetting("Timer", "BMSuggest", "True");
  store.SaveSetting("Timer", "ShowMessage", "0");
  prompts.answers = {Answer::Yes};
  start.Run();
  EXPECT_EQ(prompts.texts.back(), "Set the type of tabletop unit in options");
  EXPECT_EQ(store.GetSetting("Timer", "TableTopUnit"), "Bridgemate");
}

TEST_F(StartUpTest, WithoutUpdatesTheNoteIsSkippedToo) {
  store.SaveSetting("Timer", "AutoUpdate", "False");
  SaveAutoLaunch(store, errors, true);
  EXPECT_EQ(start.Run(), StartUp::End::OpenAtOnce);
  EXPECT_THAT(log, ElementsAre("Starting Corvanel", "Option to check for updates is switched off"));
  EXPECT_THAT(prompts.texts, IsEmpty());
}

class Folder : public FileAccess {
 public:
  Result<std::string> ReadFile(const std::string& path) override {
    if (!files.contains(path)) return Error{53, "not found"};
    return files[path];
  }
  Status WriteFile(const std::string& /*path*/, const std::string& /*bytes*/) override {
    return Error{75, "read only"};
  }
  Status Rename(const std::string& from, const std::string& to) override {
    if (readOnly || !files.contains(from)) return Error{75, "no"};
    files[to] = files[from];
    files.erase(from);
    return {};
  }
  Status Remove(const std::string& path) override {
    files.erase(path);
    return {};
  }
  std::map<std::string, std::string> files;
  bool readOnly = false;
};

TEST(StandardSettingsTest, AreImportedOnceAndDeleted) {
  FakeStore store;
  FakePrompts prompts;
  FakeErrors errors;
  Folder folder;
  std::string& waiting = folder.files["/prog/EBUsettings.txt"];
  const auto import = [&] {
    return ImportStandardSettings("/prog", folder, store, prompts, errors);
  };
  store.SaveSetting("Timer01", "Name", "Friday");
  waiting = "\"[Timer]\",0\r\n\"nRounds\",\"9\"\r\n";
  folder.readOnly = true;  // it could not be deleted, and would come again and again
  EXPECT_TRUE(import());
  EXPECT_THAT(prompts.texts, IsEmpty());
  folder.readOnly = false;
  EXPECT_TRUE(import());
  EXPECT_EQ(prompts.texts.back(), "EBU standard settings have been loaded");
  EXPECT_THAT(folder.files, IsEmpty());
  EXPECT_EQ(store.GetSetting("Timer", "nRounds"), "9");
  EXPECT_TRUE(store.RestoreCopy());  // the club's favourites are in the copy
  EXPECT_EQ(store.GetSetting("Timer01", "Name"), "Friday");
  EXPECT_TRUE(import());  // nothing is waiting any more
  EXPECT_EQ(prompts.texts.size(), 1U);
  folder.files["/prog/EBUsettings.txt"] = "\"nRounds\",\"9\"\r\n";
  const int flushes = store.flushes;
  EXPECT_FALSE(import());
  EXPECT_EQ(prompts.texts.back(), "EBU settings could not be imported");
  EXPECT_TRUE(folder.files.contains("/prog/EBUsettings.txt"));
  EXPECT_EQ(store.flushes, flushes);  // the file of the store is as it was
}

}  // namespace
}  // namespace corvanel
