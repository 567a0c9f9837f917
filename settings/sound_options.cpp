#include "settings/sound_options.h"

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "frmSound";

/// Meant so: restoring gives the end of the break another sound than an empty store has.
constexpr std::string_view kRestoredEndOfBreak = "\\Beep.wav";

std::string WarningText(float minutes) {
  return minutes == 0 ? "none" : SingleText(minutes) + " minutes before end of round";
}

}  // namespace

SoundBoxes SoundOptions::Boxes() const {
  const SoundChoices& sounds = parts_.session.settings.sounds;
  SoundBoxes boxes;
  for (size_t i = 0; i < boxes.chkPlay.size(); ++i) boxes.chkPlay[i] = sounds.play[i] != 0;
  for (size_t i = 0; i < boxes.chkPlayFinal.size(); ++i) {
    boxes.chkPlayFinal[i] = sounds.playFinalRound[i] != 0;
  }
  return boxes;
}

std::string SoundOptions::SettingsText() const {
  const SessionSettings& s = parts_.session.settings;
  return "Current warnings are:\r\nEarly warning - " + WarningText(s.MinWarning1) +
         "\r\nLast warning  - " + WarningText(s.MinWarning);
}

std::string SoundOptions::FileText(size_t cue) const {
  const std::string name(FileName(files_[cue]));
  return FileIsThere(cue) ? name : name + " (not found)";
}

void SoundOptions::cmdSound_Click(size_t cue) {
  Guarded(parts_.errors, kPlace, [&] {
    const auto file = parts_.prompts.ChooseFileToOpen("Choose a sound (wav) file",
                                                      parts_.session.ProgramFolder, "wav|*.wav");
    if (file) files_[cue] = *file;
  });
}

void SoundOptions::cmdTest_Click(size_t cue) {
  Guarded(parts_.errors, kPlace, [&] { parts_.sounds.Play(files_[cue]); });
}

bool SoundOptions::cmdRestore_Click() {
  if (parts_.prompts.AskYesNo("Do you wish to reset to the default sounds?") != Answer::Yes) {
    return false;
  }
  for (size_t i = 0; i < files_.size(); ++i) {
    const bool endOfBreak = static_cast<Cue>(i) == Cue::EndOfBreak;
    files_[i] = parts_.session.ProgramFolder +
                std::string(endOfBreak ? kRestoredEndOfBreak : kDefaultSounds[i]);
  }
  return true;
}

void SoundOptions::cmdHelp_Click() {
  Guarded(parts_.errors, kPlace,
          [&] { parts_.open(parts_.session.ProgramFolder + "/sounds.txt"); });
}

bool SoundOptions::cmdOK_Click(const SoundBoxes& boxes) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] {
    SoundChoices& sounds = parts_.session.settings.sounds;
    sounds.files = files_;
    for (size_t i = 0; i < boxes.chkPlay.size(); ++i) sounds.play[i] = boxes.chkPlay[i] ? -1 : 0;
    for (size_t i = 0; i < boxes.chkPlayFinal.size(); ++i) {
      sounds.playFinalRound[i] = boxes.chkPlayFinal[i] ? -1 : 0;
    }
  });
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
