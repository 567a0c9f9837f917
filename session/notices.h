#pragma once

#include <string>
#include <vector>

namespace corvanel {

/// What a line for the director is about; there is at most one line about each, of unheard cues
/// one for each file, of windows and tables one for each.
enum class NoticeKind {
  Away,         // the computer was asleep
  Record,       // the session cannot be written down
  LastSession,  // its record is damaged
  Store,        // the settings file was changed by somebody else
  Finish,       // cannot be met
  Break,        // will not come
  Sound,        // a cue was not heard
  SoundFiles,   // before the start: what will not be heard, followed or shown
  SoundDevice,
  Scoring,
  SecondScreen,
  Awake,         // nothing keeps the computer awake
  Window,        // is not on the screen that it was meant for
  TakenOver,     // from a scoring file into the settings
  ScoringRows,   // of the scoring file that could not be read
  OtherSession,  // is what the scoring file holds
  SilentTable,   // sends nothing
  LeftOutTable,  // does not count until it sends something
  Network,       // other screens cannot be served
  Broker,        // does not pass on how the session stands
  Devices        // those that may lead the session are not known
};

/// A line for the director: shown on his screen and never on the room's, until it is mended or
/// dismissed. Nothing waits for it.
struct Notice {
  NoticeKind kind;
  std::string text;
  std::string action = {};   // what the director can have done about it; empty when nothing
  std::string subject = {};  // the sound file, window or table that it is about

  bool operator==(const Notice&) const = default;
};

class SessionListener;

/// The lines for the director that stand now.
class Notices {
 public:
  explicit Notices(SessionListener& listener) : listener_(listener) {}

  /// Puts a line in the place of the one of its kind and subject. One that the director dismissed
  /// does not come back until it says something else or was cleared.
  void Set(const Notice& notice);
  /// What the line is about is mended.
  void Clear(NoticeKind kind, const std::string& subject = {});
  /// The director does not want to see the line.
  void Dismiss(const Notice& notice);

 private:
  void Remove(NoticeKind kind, const std::string& subject);

  SessionListener& listener_;
  std::vector<Notice> notices_;  // the latest at the end
  std::vector<Notice> dismissed_;
};

}  // namespace corvanel
