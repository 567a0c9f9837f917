#include "control/start_checks.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <set>

#include "basics/numbers.h"

namespace corvanel {
namespace {

/// Whether the session as it is set will come to the moment of a cue.
bool WillOccur(Cue cue, const SessionSettings& s) {
  switch (cue) {
    case Cue::LastWarning:
      return s.MinWarning > 0;
    case Cue::EarlyWarning:
      return s.MinWarning1 > 0;
    case Cue::EndOfRound:
      return s.nRounds > 1;
    case Cue::Break:
      return s.BreakComes();
    case Cue::EndOfBreak:
      return s.BreakComes() && s.MinWarning > 0;
    case Cue::Skip:
      return !s.Skip.Empty();
    case Cue::Arrow:
      return !s.Arrow.Empty();
  }
  return false;
}

/// The files of the cues that will be played.
std::set<std::string> FilesWanted(const Session& session, bool scoringOpen) {
  const SessionSettings& settings = session.settings;
  const Options& options = session.options;
  std::set<std::string> files;
  if (scoringOpen && options.BMAutoPause && options.BMPausePlay && !options.BMPauseSound.empty()) {
    files.insert(options.BMPauseSound);
  }
  for (size_t i = 0; i < kCues; ++i) {
    const std::string& file = settings.sounds.files[i];
    if (settings.sounds.play[i] && !file.empty() && WillOccur(static_cast<Cue>(i), settings)) {
      files.insert(file);
    }
  }
  return files;
}

void SetOrClear(Notices& notices, NoticeKind kind, const std::string& text) {
  if (text.empty()) {
    notices.Clear(kind);
  } else {
    notices.Set({kind, text, ""});
  }
}

}  // namespace

void CheckBeforeStart(const Session& session, const Surroundings& around, Notices& notices) {
  const std::set<std::string> wanted = FilesWanted(session, around.scoringOpen);
  std::set<std::string> unheard;
  for (const std::string& file : wanted) {
    const std::string named = NamedFile(around.sounds, file);
    if (named != FileName(file)) unheard.insert(named);
  }
  SetOrClear(notices, NoticeKind::SoundFiles,
             unheard.empty()
                 ? ""
                 : fmt::format("Sound file{} that will not be heard: {}",
                               unheard.size() == 1 ? "" : "s", fmt::join(unheard, ", ")));
  SetOrClear(notices, NoticeKind::SoundDevice,
             around.soundProblem.empty() || wanted.empty()
                 ? ""
                 : "No sound will be heard: " + around.soundProblem);
  SetOrClear(notices, NoticeKind::Scoring,
             around.scoringOpen && !around.scoringProblem.empty()
                 ? session.options.TableTopUnit + ": " + around.scoringProblem
                 : "");
  SetOrClear(notices, NoticeKind::SecondScreen,
             !session.settings.ExtraMonitor || around.secondScreen
                 ? ""
                 : "There is no second screen: both displays will share this one");
}

void ClearChecks(Notices& notices) {
  for (const NoticeKind kind : {NoticeKind::SoundFiles, NoticeKind::SoundDevice,
                                NoticeKind::Scoring, NoticeKind::SecondScreen}) {
    notices.Clear(kind);
  }
}

}  // namespace corvanel
