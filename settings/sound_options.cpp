#include "settings/sound_options.h"

#include <fmt/format.h>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "frmSound";

/// Deliberate: restoring gives the end of the break another sound than an empty store has.
constexpr std::string_view kRestoredEndOfBreak = "\\Beep.wav";

std::string WarningText(float minutes) {
  return minutes == 0 ? "none" : SingleText(minutes) + " minutes before end of round";
}

}  // namespace

std::string SoundOptions::SettingsText() const {
  const SessionSettings& s = parts_.session.settings;
  return "Current warnings are:\r\nEarly warning - " + WarningText(s.MinWarning1) +
         "\r\nLast warning  - " + WarningText(s.MinWarning);
}

std::string SoundOptions::FileText(size_t cue) const {
  return NamedFile(parts_.sounds, choices_.files[cue]);
}

void SoundOptions::cmdSound_Click(size_t cue) {
  Guarded(parts_.errors, kPlace, [&] {
    const auto file = parts_.prompts.ChooseFileToOpen("Choose a sound (wav) file",
                                                      parts_.session.ProgramFolder, "wav|*.wav");
    if (file) choices_.files[cue] = *file;
  });
}

void SoundOptions::cmdTest_Click(size_t cue) {
  Guarded(parts_.errors, kPlace, [&] {
    testAll_.reset();
    parts_.sounds.Test(choices_.files[cue]);
  });
}

void SoundOptions::cmdTestAll_Click() {
  Guarded(parts_.errors, kPlace, [&] {
    if (testAll_) {
      testAll_.reset();
      return parts_.sounds.StopTest();
    }
    unheard_.clear();
    TestNext(0);
  });
}

void SoundOptions::TestNext(size_t cue) {
  testAll_ = cue;
  parts_.sounds.Test(choices_.files[cue]);
}

void SoundOptions::Tested(const SoundTest& test) {
  status_ = TestText(test);
  if (test.gaveWay) testAll_.reset();
  if (!testAll_ || test.file != choices_.files[*testAll_]) return;
  status_ = fmt::format("{} of {}: {}", *testAll_ + 1, kCues, status_);
  if (!test.ended) return;
  if (!test.why.empty()) unheard_ += (unheard_.empty() ? "" : "; ") + TestText(test);
  if (*testAll_ + 1 < kCues) return TestNext(*testAll_ + 1);
  testAll_.reset();
  status_ = unheard_.empty() ? "All were played" : unheard_;
}

void SoundOptions::cmdRestore_Click() {
  if (parts_.prompts.AskYesNo("Do you wish to reset to the default sounds?") != Answer::Yes) return;
  for (size_t i = 0; i < kCues; ++i) {
    const bool endOfBreak = static_cast<Cue>(i) == Cue::EndOfBreak;
    choices_.files[i] = parts_.session.ProgramFolder +
                        std::string(endOfBreak ? kRestoredEndOfBreak : kDefaultSounds[i]);
    choices_.play[i] = true;
  }
}

void SoundOptions::cmdHelp_Click() {
  Guarded(parts_.errors, kPlace,
          [&] { parts_.open(parts_.session.ProgramFolder + "/sounds.txt"); });
}

bool SoundOptions::cmdOK_Click() {
  HandlerSteps step(parts_.errors, "frmSound.cdmOK_Click");
  parts_.session.settings.sounds = choices_;
  SettingsTable& table = parts_.table;
  std::string question = "Do you wish to save these settings";
  if (table.FavouriteInUse() != 0) question += "\r\nfor favourite - " + table.CurrentName();
  Answer answer = Answer::Cancel;
  step([&] { answer = parts_.prompts.AskYesNoCancel(question); });
  if (answer == Answer::Yes) {
    step([&] {
      table.CaptureSettings(table.FavouriteInUse());
      table.UseFavourite(table.FavouriteInUse(), table.CurrentName());
      table.SaveDefaults();
    });
  }
  return answer != Answer::Cancel;
}

}  // namespace corvanel
