#pragma once

#include <functional>
#include <optional>
#include <string>

#include "clock/round_clock.h"
#include "control/start_checks.h"

namespace corvanel {

/// Watches over what can go wrong in an evening, and tells the director in lines.
class Watch : public SessionListener {
 public:
  struct Parts {
    const Session& session;
    RoundClock& clock;
    Notices& notices;
    /// What the checks before a start see; nothing while the director does not plan.
    std::function<std::optional<Surroundings>()> look;
    /// Where the settings file is kept as somebody else had changed it; empty when nobody had.
    std::function<std::string()> outsideChange;
  };
  explicit Watch(const Parts& parts) : parts_(parts) {}

  /// To be called every few seconds: before a session starts, names what would go wrong in it
  /// while it can be mended.
  void Check();
  /// A sound was heard, or a cue was not; `why` is for people.
  void SoundHeard(const std::string& file) { parts_.notices.Clear(NoticeKind::Sound, file); }
  void SoundNotHeard(const std::string& file, const std::string& why);
  /// Whether nothing keeps the computer awake though a session is under way.
  void MayFallAsleep(bool may);
  /// A display came to the screen that it was meant for, or to another one. `window`: its title.
  void DisplayLanded(const std::string& window, bool there);
  void ShowFace(const ClockFace& face) override;

  /// The director pressed the button of a line, or dismissed it.
  void Act(NoticeKind kind);
  void Dismiss(const Notice& notice);

 private:
  Parts parts_;
};

}  // namespace corvanel
