#include "session/session_listener.h"

namespace corvanel {

template <class Call>
void Broadcast::ForEach(std::string_view place, Call call) {
  for (SessionListener* listener : listeners_) {
    Guarded(errors_, place, [&] { call(*listener); });
  }
}

void Broadcast::ShowFace(const ClockFace& face) {
  ForEach("frmMain.Display", [&](SessionListener& to) { to.ShowFace(face); });
}

void Broadcast::ShowTimeOfDay(const std::string& time) {
  ForEach("frmMain.TimerCurrentTime_Timer", [&](SessionListener& to) { to.ShowTimeOfDay(time); });
}

void Broadcast::ShowTables(const ProgressFace& tables) {
  ForEach("frmMain.TimerBWS_Timer", [&](SessionListener& to) { to.ShowTables(tables); });
}

void Broadcast::ShowNotices(const std::vector<Notice>& notices) {
  ForEach("frmMain.ShowNotices", [&](SessionListener& to) { to.ShowNotices(notices); });
}

void Broadcast::ShowScoring(const std::string& unit, const std::string& file) {
  ForEach("frmMain.BWSSetUnitCaptions", [&](SessionListener& to) { to.ShowScoring(unit, file); });
}

void Broadcast::Happened(EventKind kind, const std::string& text) {
  ForEach("frmMain.Happened", [&](SessionListener& to) { to.Happened(kind, text); });
}

}  // namespace corvanel
