#pragma once

#include <functional>
#include <string>

#include "clock/tick_timer.h"
#include "scoring/progress_monitor.h"
#include "scoring/scoring_link.h"

namespace corvanel {

/// The link to the table-top units: what is opened and closed, and when it is looked at.
class ScoringDesk : public SessionListener {
 public:
  struct Parts {
    ScoringLink::Parts link;
    RoundClock& clock;
    SoundPlayer& sounds;
    TickTimer& timerBWS;  // wakes Poll
    /// Seconds until the clock's next wake-up; negative when none is outstanding.
    std::function<double()> secondsToTick;
  };
  explicit ScoringDesk(const Parts& parts)
      : parts_(parts),
        link_(parts.link),
        monitor_({parts.link.session, link_, parts.clock, parts.link.listener, parts.sounds,
                  parts.link.time, parts.link.log, parts.link.errors, parts.link.notices}) {}

  /// The control window is shown for the first time: offers the latest scoring file.
  void Suggest() { FileChanged(link_.Suggest()); }
  /// The director chose a file outside the program.
  void Open(const std::string& path) { FileChanged(link_.BWSOpenFile(path)); }
  void mnuOpenFile_Click() { FileChanged(link_.mnuOpenFile_Click()); }
  void mnuCloseFile_Click();
  /// Goes on with the file of an earlier run of the program.
  void Reopen(const FollowedFile& file);
  ScoringLink& Link() { return link_; }
  /// The director starts a session.
  void SessionStarts() { monitor_.SessionStarts(); }
  /// The options of the link were changed.
  void OptionsChanged();
  /// The director pressed the button of a line; of one that is about the tables or their file.
  void Act(const Notice& notice);
  void Poll();
  void Happened(EventKind kind, const std::string& text) override;

  /// Looks once whether the file that is open can be followed, and again while it cannot. Changes
  /// and logs nothing.
  void CheckFile();
  /// Why it cannot, as the last two looks found; empty when it can.
  std::string Problem() const;

 private:
  void FileChanged(bool changed);

  Parts parts_;
  ScoringLink link_;
  ProgressMonitor monitor_;
  int failedLooks_ = 0;  // one after the other
  bool looked_ = false;  // and found it in order
};

}  // namespace corvanel
