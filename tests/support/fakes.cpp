#include "tests/support/fakes.h"

#include <algorithm>

#include "basics/numbers.h"

namespace corvanel {

std::optional<std::string> FakeStore::GetSetting(std::string_view section,
                                                 std::string_view key) const {
  for (const auto& [name, value] : GetAllSettings(section)) {
    if (SameName(name, key)) return value;
  }
  return std::nullopt;
}

KeysAndValues FakeStore::GetAllSettings(std::string_view section) const {
  for (const auto& [name, values] : sections_) {
    if (SameName(name, section)) return values;
  }
  return {};
}

void FakeStore::SaveSetting(std::string_view section, std::string_view key,
                            std::string_view value) {
  auto found = std::find_if(sections_.begin(), sections_.end(),
                            [&](const auto& s) { return SameName(s.first, section); });
  if (found == sections_.end()) {
    found = sections_.insert(sections_.end(), {std::string(section), KeysAndValues{}});
  }
  for (auto& [name, present] : found->second) {
    if (SameName(name, key)) {
      present = value;
      return;
    }
  }
  found->second.emplace_back(key, value);
}

void FakeStore::DeleteSection(std::string_view section) {
  std::erase_if(sections_, [&](const auto& s) { return SameName(s.first, section); });
}

void FakeStore::Flush() {
  if (full) throw RuntimeError(61, "Disk full");
  ++flushes;
}

ClockBench::ClockBench(ClockTime start, DateTime day, const std::string& boot)
    : time(start, day, boot), clock({session, time, time, *this, broadcast, errors}) {
  broadcast.Add(*this);
  session.settings.sounds.files = {"warning0", "warning1", "end",     "break",
                                   "skip",     "arrow",    "endbreak"};
  session.settings.optBreak = false;
}

void ClockBench::Happened(EventKind kind, const std::string& text) {
  log.push_back(TimeTextWithSeconds(time.TimeOfDay()) + ' ' +
                std::string(kEventNames[static_cast<size_t>(kind)]) + ' ' + text);
}

void ClockBench::Pass(double seconds) {
  const double until = time.Elapsed() + seconds;
  while (time.Due() && *time.Due() <= until) {
    time.PassToWakeUp();
    clock.Tick();
  }
  time.PassTo(until);
}

double ClockBench::RunToEnd() {
  while (time.Due() && clock.State().phase != Phase::Ended) {
    time.PassToWakeUp();
    clock.Tick();
  }
  return time.Elapsed();
}

}  // namespace corvanel
