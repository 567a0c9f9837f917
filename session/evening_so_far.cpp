#include "session/evening_so_far.h"

#include <tuple>

namespace corvanel {
namespace {

/// The order of an evening: a round, the break that may follow it, and its move.
auto OrderOf(Phase phase, int round) {
  const int within = phase == Phase::Round ? 0 : phase == Phase::Break ? 1 : 2;
  return std::tuple(round, within);
}

}  // namespace

void EveningSoFar::ShowFace(const ClockFace& face) {
  if (!Runs(face.phase)) {
    begun_.clear();
    return;
  }
  const auto now = OrderOf(face.phase, face.round);
  const auto last = [this] { return OrderOf(begun_.back().phase, begun_.back().round); };
  while (!begun_.empty() && last() > now) begun_.pop_back();
  if (begun_.empty() || last() < now) {
    begun_.push_back({face.phase, face.round, time_.Uptime()});
  }
}

Evening EveningSoFar::Whole(const std::vector<TimetableLine>& ahead) const {
  const double uptime = time_.Uptime();
  const ClockTime timeOfDay = time_.TimeOfDay();
  if (begun_.empty() || ahead.empty()) return {ahead, timeOfDay};
  Evening evening;
  const double first = begun_.front().at;
  const auto minutes = [&](double from, double to) { return (to - from) / 60; };
  evening.start = timeOfDay.PlusSeconds(first - uptime);
  evening.standsAt = minutes(first, uptime);
  for (size_t i = 0; i < begun_.size(); ++i) {
    const double end = i + 1 < begun_.size() ? begun_[i + 1].at : uptime;
    evening.lines.push_back({begun_[i].phase, begun_[i].round, minutes(first, begun_[i].at),
                             minutes(begun_[i].at, end)});
  }
  // What is left of the phase under way belongs to its line.
  evening.lines.back().minutes += ahead.front().minutes;
  for (size_t i = 1; i < ahead.size(); ++i) {
    evening.lines.push_back(ahead[i]);
    evening.lines.back().startsIn += evening.standsAt;
  }
  return evening;
}

}  // namespace corvanel
