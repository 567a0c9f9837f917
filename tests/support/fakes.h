#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "basics/runtime_error.h"
#include "clock/round_clock.h"
#include "clock/virtual_time.h"
#include "session/prompts.h"
#include "session/sound_player.h"
#include "settings/settings_store.h"

namespace corvanel {

/// Answers from a queue (Ok or No when it is empty) and remembers what was shown.
class FakePrompts : public Prompts {
 public:
  void Message(const std::string& text) override { texts.push_back(text); }
  Answer AskYesNo(const std::string& question) override { return Next(question); }
  Answer OfferYesNo(const std::string& question) override { return Next(question); }
  Answer AskYesNoCancel(const std::string& question) override { return Next(question); }
  std::optional<size_t> Choose(const std::string& question,
                               const std::vector<std::string>& answers) override {
    texts.push_back(question);
    choices = answers;
    return choice;
  }
  Answer AskToContinue(const std::string& question) override { return Next(question); }
  std::optional<std::string> ChooseFileToSave(const std::string& name,
                                              const std::string& /*filter*/) override {
    texts.push_back(name);
    return file;
  }
  std::optional<std::string> ChooseFileToOpen(const std::string& title,
                                              const std::string& /*folder*/,
                                              const std::string& /*filter*/) override {
    texts.push_back(title);
    return file;
  }

  std::vector<std::string> choices;  // of the last question with answers of its own
  std::optional<size_t> choice;      // what is chosen of them
  std::optional<std::string> file;   // what the choosers answer

  std::deque<Answer> answers;
  std::vector<std::string> texts;

 private:
  Answer Next(const std::string& question) {
    texts.push_back(question);
    if (answers.empty()) return Answer::No;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

/// Collects the reports as "number place line".
class FakeErrors : public ErrorTrap {
 public:
  void ReportError(std::string_view place, const RuntimeError& error, int line) override {
    reports.push_back(std::to_string(error.Number()) + ' ' + std::string(place) + ' ' +
                      std::to_string(line));
    descriptions.emplace_back(error.what());
  }
  std::vector<std::string> reports;
  std::vector<std::string> descriptions;
};

/// A store in memory that can be told to fail.
class FakeStore : public SettingsStore {
 public:
  std::optional<std::string> GetSetting(std::string_view section,
                                        std::string_view key) const override;
  KeysAndValues GetAllSettings(std::string_view section) const override;
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override;
  void DeleteSection(std::string_view section) override;
  void Flush() override;
  void KeepAsDamaged() override { keptAsDamaged = true; }
  std::string KeepCopy() override {
    copy_ = sections_;
    return "the copy";
  }
  bool RestoreCopy() override {
    if (!copy_) return false;
    sections_ = *copy_;
    return true;
  }

  bool full = false;
  bool keptAsDamaged = false;
  int flushes = 0;

 private:
  std::vector<std::pair<std::string, KeysAndValues>> sections_;
  std::optional<std::vector<std::pair<std::string, KeysAndValues>>> copy_;
};

/// A round clock in virtual time that keeps what it shows, plays and tells.
class ClockBench : public SoundPlayer, public SessionListener {
 public:
  explicit ClockBench(ClockTime start = ClockTime::At(19, 30), DateTime day = {},
                      const std::string& boot = "virtual");

  void ShowFace(const ClockFace& shown) override {
    face = shown;
    countdowns.push_back(shown.countdown);
  }
  void ShowTimeOfDay(const std::string& shown) override { timeOfDay = shown; }
  void ShowNotices(const std::vector<Notice>& shown) override { notices = shown; }
  void Play(const std::string& file) override { played.push_back(file); }
  void Test(const std::string& file) override { played.push_back(file); }
  void StopTest() override { played.emplace_back("stopped"); }
  SoundFitness Fitness(const std::string& file) const override {
    return file == "missing.wav" ? SoundFitness::NotFound
           : file == "text.wav"  ? SoundFitness::Unplayable
                                 : SoundFitness::Fine;
  }
  void Happened(EventKind kind, const std::string& text) override;

  /// Lets `seconds` pass; the clock wakes up whenever it asked to.
  void Pass(double seconds);
  /// Runs until the session has ended. Returns its length in seconds.
  double RunToEnd();

  Session session;
  FakeErrors errors;
  Broadcast broadcast{errors};  // the bench itself is its first listener
  VirtualTime time;
  RoundClock clock;
  ClockFace face;
  std::vector<Notice> notices;
  std::string timeOfDay;
  std::vector<std::string> countdowns;  // each as it was shown
  std::vector<std::string> played;
  std::vector<std::string> log;  // "hh:mm:ss kind text"
};

}  // namespace corvanel
