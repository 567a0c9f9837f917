#include "network/remote_desk.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>

#include "network/room_state.h"

namespace corvanel {
namespace {

using nlohmann::ordered_json;

constexpr const char* kMovedOn = "The session has moved on meanwhile: nothing was done.";

/// What devices can ask for, in their words.
struct Command {
  std::string_view word;
  SessionCommand command;
  bool PossibleCommands::*possible;  // null: whenever there is something to undo
};
constexpr std::array<Command, 6> kCommands = {
    {{"pause", SessionCommand::Pause, &PossibleCommands::pause},
     {"resume", SessionCommand::Resume, &PossibleCommands::resume},
     {"longer", SessionCommand::AddMinute, &PossibleCommands::minutes},
     {"shorter", SessionCommand::SubtractMinute, &PossibleCommands::minutes},
     {"next", SessionCommand::NextRound, &PossibleCommands::nextRound},
     {"undo", SessionCommand::Undo, nullptr}}};

/// The text with which the command can be given as the session stands now; empty when it means
/// nothing. It holds what the director sees when he gives it, so that two who press at once do not
/// skip a round or undo what they never saw.
std::string TextNow(const Command& command, const RoundClock& clock) {
  if (command.possible != nullptr && !(clock.Can().*command.possible)) return "";
  if (command.command == SessionCommand::NextRound) {
    return fmt::format("{} {} {}", command.word, NameOf(clock.State().phase), clock.State().round);
  }
  if (command.command != SessionCommand::Undo) return std::string(command.word);
  const UndoStep* const step = clock.NextUndo();
  return step == nullptr ? "" : fmt::format("{} {:.3f}", command.word, step->at);
}

}  // namespace

void RemoteDesk::Load() {
  keeps_ = parts_.keeper.Take();
  if (!keeps_) {
    parts_.notices.Set(
        {NoticeKind::Devices,
         "Another Corvanel works with the devices that lead: those that are let in here "
         "lead this session alone"});
    return;
  }
  const std::string kept = parts_.keeper.Kept();
  if (kept.empty()) return;
  auto devices = ReadDevices(kept);
  if (devices) {
    devices_ = devices.Value();
    return;
  }
  parts_.keeper.PutAside();
  parts_.notices.Set(
      {NoticeKind::Devices, "The list of devices that may lead the session cannot be read: " +
                                devices.Failure().description + ". Let them in again."});
}

void RemoteDesk::Keep() {
  if (keeps_) parts_.keeper.Keep(TextOf(devices_));
}

void RemoteDesk::SpeakBy(RemoteLines* lines) {
  lines_ = lines;
  told_.clear();
  Admit();
  Tell();
}

void RemoteDesk::Admit() {
  if (lines_ != nullptr) lines_->Admit(RemoteGate(devices_, invitedKey_));
}

const std::string& RemoteDesk::Invite() {
  code_ = NewCode();
  invitedKey_ = KeyOfCode(code_);
  Admit();
  return code_;
}

void RemoteDesk::EndInvitation() {
  code_.clear();
  invitedKey_.clear();
  Admit();
}

void RemoteDesk::SendAway(const RemoteDevice& device) {
  std::erase(devices_, device);
  Keep();
  Admit();
}

void RemoteDesk::Hear(const RemoteWord& word) {
  const bool comes = !invitedKey_.empty() && word.invitation == invitedKey_;
  if (comes) return Join(word.device);
  // Sent away meanwhile, or the invitation has ended.
  const auto device = std::find_if(devices_.begin(), devices_.end(),
                                   [&](const RemoteDevice& d) { return d.key == word.device.key; });
  if (device == devices_.end()) return;
  const std::string refusal = Obey(word, device->name);
  if (lines_ != nullptr) lines_->Answer(word, refusal);
}

/// The next one needs another code.
void RemoteDesk::Join(const RemoteDevice& device) {
  const auto taken = [this](const std::string& name) {
    return std::any_of(devices_.begin(), devices_.end(),
                       [&](const RemoteDevice& other) { return other.name == name; });
  };
  RemoteDevice named = device;
  for (int number = 2; taken(named.name); ++number) {
    named.name = fmt::format("{} {}", device.name, number);
  }
  devices_.push_back(named);
  Keep();
  Invite();
}

/// Returns why not.
std::string RemoteDesk::Obey(const RemoteWord& word, const std::string& by) {
  const std::string_view name = std::string_view(word.text).substr(0, word.text.find(' '));
  const auto* const command =
      std::find_if(kCommands.begin(), kCommands.end(),
                   [&](const Command& candidate) { return candidate.word == name; });
  if (command == kCommands.end()) return kMovedOn;
  RoundClock& clock = parts_.clock;
  bool done = false;
  clock.DoFor(by, command->command, [&] {
    done = TextNow(*command, clock) == word.text;
    return done;
  });
  // Another one was quicker with the same.
  const bool stands = (command->command == SessionCommand::Pause && clock.State().paused) ||
                      (command->command == SessionCommand::Resume && !clock.State().paused);
  return done || stands ? "" : kMovedOn;
}

void RemoteDesk::ShowFace(const ClockFace& /*face*/) {
  TellOfKeeping();
  Tell();
}

void RemoteDesk::TellOfKeeping() {
  const std::string failure = lines_ == nullptr ? "" : parts_.keeper.Failure();
  if (failure == failure_) return;
  failure_ = failure;
  if (failure.empty()) {
    parts_.notices.Clear(NoticeKind::Devices);
  } else {
    parts_.notices.Set(
        {NoticeKind::Devices,
         "Which devices may lead the session could not be written down, and holds for "
         "this evening only: " +
             failure});
  }
}

void RemoteDesk::ShowNotices(const std::vector<Notice>& notices) {
  notices_ = notices;
  Tell();
}

/// Whenever anything of it has changed.
void RemoteDesk::Tell() {
  if (lines_ == nullptr) return;
  const RoundClock& clock = parts_.clock;
  ordered_json can = ordered_json::object();
  for (const Command& command : kCommands) {
    const std::string text = TextNow(command, clock);
    if (!text.empty()) can[std::string(command.word)] = text;
  }
  ordered_json state = {{"can", can}, {"undo", nullptr}, {"lines", ordered_json::array()}};
  if (const UndoStep* const step = clock.NextUndo(); step != nullptr) {
    state["undo"] = {{"what", NameOf(step->command)}, {"by", step->by}, {"at", step->at}};
  }
  for (const Notice& notice : notices_) state["lines"].push_back(notice.text);
  const std::string text = state.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
  if (text == told_) return;
  told_ = text;
  lines_->TellDevices(text);
}

}  // namespace corvanel
