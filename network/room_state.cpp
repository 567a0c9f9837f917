#include "network/room_state.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>

#include "display/state_words.h"
#include "display/widest_texts.h"
#include "session/captions.h"
#include "session/contrast.h"

namespace corvanel {
namespace {

using nlohmann::ordered_json;

constexpr double kClockWasSet = 0.25;  // seconds
constexpr size_t kBriefFaces = 8;

// By their numbers in the programs; the names are the form's own.
constexpr std::array<const char*, 5> kPhases = {"idle", "round", "move", "break", "ended"};
constexpr std::array<const char*, kElements> kStyles = {
    "now", "finish", "caption", "calm", "last", "timeUp", "early", "screen", "title", "units"};
constexpr std::array<const char*, 5> kShown = {"now", "finish", "caption", "countdown", "title"};

std::string Text(const ordered_json& json) {
  return json.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

std::string Text(Colour colour) {
  return fmt::format("#{:02x}{:02x}{:02x}", colour.red, colour.green, colour.blue);
}

ordered_json JsonOf(const ElementStyle& style) {
  return {{"font", style.Name},
          {"points", style.Size},
          {"bold", style.Bold},
          {"italic", style.Italic},
          {"underline", style.Underline},
          {"strikethrough", style.Strikethrough},
          {"colour", Text(style.Forecolour)},
          {"back", Text(style.Backcolour)}};
}

ordered_json JsonOf(const std::vector<SectionCells>& sections) {
  ordered_json all = ordered_json::array();
  for (const SectionCells& section : sections) {
    ordered_json tables = ordered_json::array();
    for (const TableCell& cell : section.cells) {
      tables.push_back(
          {{"number", cell.number}, {"state", NameOf(cell.state)}, {"text", cell.text}});
    }
    all.push_back({{"letter", section.letter}, {"tables", tables}});
  }
  return all;
}

/// The words that stand by themselves before and after the session.
std::string CaptionOf(const ClockFace& face) {
  if (face.phase == Phase::Idle) return "The session has not begun";
  return face.phase == Phase::Ended ? "" : face.caption;
}

/// Sounds go by the numbers of their cues: which files they are is nobody else's business.
std::vector<size_t> NumbersOf(const std::vector<std::string>& sounds, const SoundChoices& choices) {
  std::vector<size_t> numbers;
  for (const std::string& sound : sounds) {
    const auto found = std::find(choices.files.begin(), choices.files.end(), sound);
    if (found != choices.files.end()) {
      numbers.push_back(static_cast<size_t>(found - choices.files.begin()));
    }
  }
  return numbers;
}

ordered_json JsonOf(const FaceAhead& ahead, const std::string& waiting, const Session& session) {
  const ClockFace& face = ahead.face;
  const StateWords words = StateWordsOf(face, waiting, session.options.Form());
  return {{"from", ahead.from},
          {"ends", ahead.ends},
          {"left", face.secondsLeft},
          {"phase", NameOf(face.phase)},
          {"round", face.round},
          {"paused", face.paused},
          {"style", kStyles[static_cast<size_t>(face.countdownStyle)]},
          {"caption", CaptionOf(face)},
          {"message", face.message},
          {"tag", words.tag},
          {"large", words.large},
          {"finish", FinishAndBreak(face.finish, face.breakLine)},
          {"sounds", NumbersOf(ahead.sounds, session.settings.sounds)}};
}

ordered_json LooksOf(const Session& session) {
  ordered_json styles;
  for (size_t i = 0; i < session.elements.size(); ++i)
    styles[kStyles[i]] = JsonOf(session.elements[i]);
  const Colour back = session.elements[static_cast<size_t>(Element::ScreenBackground)].Backcolour;
  for (const Element element :
       {Element::TimeRemaining, Element::LastWarning, Element::TimeUp, Element::EarlyWarning}) {
    const auto index = static_cast<size_t>(element);
    const ElementStyle still = Receded(session.elements[index], back);
    styles[kStyles[index]]["still"] = Text(still.Forecolour);
    styles[kStyles[index]]["stillBack"] = Text(still.Backcolour);
  }
  ordered_json shown;
  for (size_t i = 0; i < kShown.size(); ++i) shown[kShown[i]] = session.options.Show[i];
  // Of what is drawn beside the texts: what stands out, and what recedes.
  const Colour ink = Contrast(back);
  return {{"styles", styles},
          {"show", shown},
          {"ink", Text(ink)},
          {"faint", Text(Receding(ink, back, 0, kFaintText))},
          {"faintLine", Text(Receding(ink, back, 0, kFaintLine))}};
}

}  // namespace

const char* NameOf(Phase phase) {
  return kPhases[static_cast<size_t>(phase)];
}

RoomState::RoomState(const Session& session, std::vector<FaceAhead> faces,
                     const ProgressFace& progress, const Moment& now, ClockTime timeOfDay)
    : clock_(now.boot),
      midnight_(now.uptime - timeOfDay.Seconds()),
      rounds_(session.settings.nRounds),
      sounds_(session.settings.sounds.files),
      faces_(std::move(faces)) {
  const bool paused = faces_.front().face.paused;
  const UnitsShown units = UnitsShownOn(false, session.options, paused, progress);
  tables_ = Text(JsonOf(units.tables));
  ordered_json list = ordered_json::array();
  for (const FaceAhead& face : faces_) {
    list.push_back(JsonOf(face, &face == &faces_.front() ? units.waiting : "", session));
  }
  // Counting down, what is left follows from the end.
  if (!paused) list.front()["left"] = 0;
  const ordered_json common = {{"title", ShownTitle(session.settings.Header)},
                               {"rounds", rounds_},
                               {"step", CountdownStep(session.options.TimeChange)},
                               {"hours24", session.options.TimeAs24hour},
                               {"line", units.line}};
  ordered_json body = common;
  body.update({{"looks", LooksOf(session)},
               {"info", units.info},
               {"sections", JsonOf(units.tables)},
               {"faces", list}});
  body_ = Text(body);
  while (list.size() > kBriefFaces) list.erase(list.size() - 1);
  ordered_json brief = common;
  brief["faces"] = std::move(list);
  brief_ = Text(brief);
}

std::string RoomState::Headed(const std::string& body, double now) const {
  const ordered_json head = {
      {"version", kRoomStateVersion}, {"clock", clock_}, {"now", now}, {"midnight", midnight_}};
  const std::string text = Text(head);
  return text.substr(0, text.size() - 1) + ",\"room\":" + body + '}';
}

std::string RoomState::Message(double now) const {
  return Headed(body_, now);
}

std::string RoomState::Brief(double now) const {
  return Headed(brief_, now);
}

const FaceAhead* RoomState::FaceAt(double now) const {
  const auto next = std::find_if(faces_.begin(), faces_.end(),
                                 [&](const FaceAhead& face) { return face.from > now; });
  if (faces_.empty()) return nullptr;
  return next == faces_.begin() ? &faces_.front() : &*std::prev(next);
}

std::string RoomState::Now(double now) const {
  const FaceAhead* ahead = FaceAt(now);
  if (ahead == nullptr) return "{}";
  const ClockFace& face = ahead->face;
  const bool counts = ahead->ends > 0;
  const ordered_json state = {
      {"phase", NameOf(face.phase)},
      {"round", face.round},
      {"rounds", rounds_},
      {"paused", face.paused},
      {"secondsLeft", counts ? SecondsRemaining(ahead->ends, now) : face.secondsLeft},
      {"caption", face.caption},
      {"message", face.message},
      {"finish", face.finish},
      {"now", TimeTextWithSeconds(ClockTime(std::fmod(now - midnight_, 86400)))},
      {"tables", ordered_json::parse(tables_)}};
  return Text(state);
}

std::string RoomState::Sound(size_t number) const {
  return number < sounds_.size() ? sounds_[number] : "";
}

bool RoomState::Tells(const RoomState& other) const {
  return body_ != other.body_ || clock_ != other.clock_ || sounds_ != other.sounds_ ||
         std::abs(midnight_ - other.midnight_) > kClockWasSet;
}

}  // namespace corvanel
