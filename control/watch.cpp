#include "control/watch.h"

#include <fmt/format.h>

#include "basics/numbers.h"

namespace corvanel {

void Watch::Check() {
  const std::string kept = parts_.outsideChange();
  if (!kept.empty()) {
    parts_.notices.Set({NoticeKind::Store,
                        fmt::format("The settings file was changed by another program. Its "
                                    "contents were kept as {}",
                                    FileName(kept)),
                        ""});
  }
  if (parts_.clock.UnderWay()) {
    ClearChecks(parts_.notices);
  } else if (const auto around = parts_.look()) {
    CheckBeforeStart(parts_.session, *around, parts_.notices);
  }
}

void Watch::SoundNotHeard(const std::string& file, const std::string& why) {
  parts_.notices.Set({NoticeKind::Sound,
                      fmt::format("The sound {} was not heard: {}", FileName(file), why), "",
                      file});
}

void Watch::MayFallAsleep(bool may) {
  if (!may) {
    parts_.notices.Clear(NoticeKind::Awake);
  } else {
    parts_.notices.Set({NoticeKind::Awake,
                        "Nothing keeps this computer awake: set its power settings so that the "
                        "screen stays on"});
  }
}

void Watch::DisplayLanded(const std::string& window, bool there) {
  if (there) {
    parts_.notices.Clear(NoticeKind::Window, window);
  } else {
    parts_.notices.Set({NoticeKind::Window,
                        fmt::format("This desktop did not let \"{}\" choose its screen: drag it "
                                    "to the other one and press F there",
                                    window),
                        "", window});
  }
}

void Watch::ShowFace(const ClockFace& face) {
  if (face.away == 0) {
    parts_.notices.Clear(NoticeKind::Away);
    return;
  }
  parts_.notices.Set({NoticeKind::Away,
                      fmt::format("The computer was asleep for {}. The clock kept running.",
                                  LengthText(face.away)),
                      face.awayCanBeTakenOut ? "Don't count that time" : ""});
}

void Watch::Act(NoticeKind kind) {
  if (kind == NoticeKind::Away) parts_.clock.Do(SessionCommand::TakeOutGap);
}

void Watch::Dismiss(const Notice& notice) {
  if (notice.kind == NoticeKind::Away) parts_.clock.Do(SessionCommand::LeaveGapIn);
  parts_.notices.Dismiss(notice);
}

}  // namespace corvanel
