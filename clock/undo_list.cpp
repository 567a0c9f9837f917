#include "clock/undo_list.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

namespace corvanel {
namespace {

constexpr std::array<std::string_view, 13> kNames = {
    "start",     "pause",           "resume",         "next round",         "restart", "+1 minute",
    "−1 minute", "automatic pause", "automatic move", "the time taken out", "",        "",
    ""};
static_assert(kNames.size() == static_cast<size_t>(SessionCommand::LeaveGapIn) + 1);

}  // namespace

std::string_view NameOf(SessionCommand command) {
  return kNames[static_cast<size_t>(command)];
}

void UndoList::Push(const UndoStep& step) {
  if (steps_.size() == kLevels) steps_.erase(steps_.begin());
  steps_.push_back(step);
}

const UndoStep* UndoList::Next(double uptime) const {
  const bool offers = !steps_.empty() && uptime - steps_.back().at < kForgottenAfter;
  return offers ? &steps_.back() : nullptr;
}

std::optional<UndoStep> UndoList::Take(double uptime) {
  if (Next(uptime) == nullptr) return {};
  const UndoStep step = steps_.back();
  steps_.pop_back();
  return step;
}

std::string UndoList::JustDone(double uptime) const {
  if (steps_.empty() || uptime - steps_.back().at >= kJustNow) return {};
  const UndoStep& step = steps_.back();
  const bool given =
      step.command >= SessionCommand::Pause && step.command <= SessionCommand::SubtractMinute;
  if (!given) return {};
  return fmt::format("{}{}{}", NameOf(step.command), step.by.empty() ? "" : " by ", step.by);
}

std::string UndoList::Label(double uptime) const {
  const UndoStep* const step = Next(uptime);
  if (step == nullptr) return {};
  return fmt::format("Undo {}, {}", NameOf(step->command), AgoText(uptime - step->at));
}

}  // namespace corvanel
