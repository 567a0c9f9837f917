#include "network/rooms.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "network/room_state.h"

namespace corvanel {
namespace {

using nlohmann::ordered_json;

constexpr std::string_view kBefore = "corvanel/";
constexpr std::string_view kState = "/state";
constexpr std::string_view kIsHere = "/here";
constexpr size_t kMostRooms = 300;
constexpr size_t kLongestName = 60;       // bytes
constexpr size_t kLongestState = 16'384;  // the same
constexpr size_t kMostFaces = 40;
constexpr size_t kLagsKept = 8;
constexpr double kSilent = 2.5 * kBeat;  // seconds without a word, after which it is told
constexpr double kTick = 20;             // the same lag, in so many parts of a second

std::string JsonText(const ordered_json& json) {
  return json.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

std::string Topic(const std::string& room, std::string_view end) {
  std::string name = room;
  std::erase_if(name, [](char sign) {
    return sign == '/' || sign == '+' || sign == '#' || static_cast<unsigned char>(sign) < ' ';
  });
  return std::string(kBefore) + name + std::string(end);
}

/// The name between the beginning and this end of a topic.
std::optional<std::string> NameIn(std::string_view topic, std::string_view end) {
  if (!topic.starts_with(kBefore) || !topic.ends_with(end)) return std::nullopt;
  if (topic.size() <= kBefore.size() + end.size()) return std::nullopt;
  topic.remove_prefix(kBefore.size());
  topic.remove_suffix(end.size());
  return std::string(topic);
}

/// One that is not among them has the type that no value has.
using Type = ordered_json::value_t;
Type TypeOf(const ordered_json& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end()) return Type::discarded;
  const bool number = found->is_number() && std::isfinite(found->get<double>());
  return number ? Type::number_float : found->type();
}

double LeastLag(const std::deque<double>& lags) {
  return *std::min_element(lags.begin(), lags.end());
}

bool HasAll(const ordered_json& object, Type type, std::initializer_list<const char*> keys) {
  return object.is_object() && std::all_of(keys.begin(), keys.end(), [&](const char* key) {
           return TypeOf(object, key) == type;
         });
}

bool IsFace(const ordered_json& face) {
  return HasAll(face, Type::number_float, {"from", "ends", "left", "round"}) &&
         HasAll(face, Type::string, {"phase", "style", "caption", "message", "tag", "large"}) &&
         HasAll(face, Type::boolean, {"paused"});
}

bool IsRoom(const ordered_json& room) {
  return HasAll(room, Type::number_float, {"rounds", "step"}) && room["step"] >= 1 &&
         HasAll(room, Type::string, {"title", "line"}) &&
         HasAll(room, Type::boolean, {"hours24"}) && HasAll(room, Type::array, {"faces"}) &&
         !room["faces"].empty() && room["faces"].size() <= kMostFaces &&
         std::all_of(room["faces"].begin(), room["faces"].end(), IsFace);
}

}  // namespace

std::string StateTopic(const std::string& room) {
  return Topic(room, kState);
}

std::string HereTopic(const std::string& room) {
  return Topic(room, kIsHere);
}

void Rooms::Hear(const BrokerWord& word) {
  const auto of = NameIn(word.topic, kState);
  const auto name = of ? of : NameIn(word.topic, kIsHere);
  if (!name || name->size() > kLongestName || word.text.size() > kLongestState) return;
  // Whoever runs the broker took it out.
  if (word.text.empty()) {
    rooms_.erase(*name);
    return;
  }
  if (!rooms_.contains(*name) && rooms_.size() >= kMostRooms) return;
  if (of) {
    HearState(rooms_[*name], word);
  } else {
    rooms_[*name].here = word.text == kHere;
  }
}

/// The quickest of the latest words was on its way for the shortest time: the least lag is nearest
/// to the truth. One that the broker kept says nothing about that.
void Rooms::HearState(Room& room, const BrokerWord& word) {
  const ordered_json state = ordered_json::parse(word.text, nullptr, false);
  if (!HasAll(state, Type::number_float, {"version"}) || state["version"] != kRoomStateVersion ||
      !HasAll(state, Type::string, {"clock"}) ||
      !HasAll(state, Type::number_float, {"now", "midnight"}) ||
      !HasAll(state, Type::object, {"room"}) || !IsRoom(state["room"])) {
    return;
  }
  if (state["clock"] != room.clock) {
    room.lags.clear();
    room.heard = 0;
  }
  room.clock = state["clock"];
  room.toldAt = state["now"];
  ordered_json told = state["room"];
  told["midnight"] = state["midnight"];
  room.told = JsonText(told);
  if (!word.kept) {
    room.lags.push_back(word.at - room.toldAt);
    if (room.lags.size() > kLagsKept) room.lags.pop_front();
  }
  // What was kept while we heard nothing may be news, too.
  if (!room.lags.empty()) room.heard = std::max(room.heard, room.toldAt + LeastLag(room.lags));
}

std::string Rooms::Text(double now) const {
  std::string all;
  for (const auto& [name, room] : rooms_) {
    if (room.told.empty()) continue;
    ordered_json head = {{"name", name}, {"here", room.here}};
    if (room.lags.empty()) {
      head["at"] = room.toldAt;
    } else {
      head["lag"] = std::round(LeastLag(room.lags) * kTick) / kTick;
      if (now - room.heard > kSilent) head["silentSince"] = room.heard;
    }
    const std::string text = JsonText(head);
    all += fmt::format("{}{},\"room\":{}}}", all.empty() ? "" : ",",
                       text.substr(0, text.size() - 1), room.told);
  }
  return fmt::format("{{\"rooms\":[{}]}}", all);
}

}  // namespace corvanel
