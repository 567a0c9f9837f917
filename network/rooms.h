#pragma once

#include <deque>
#include <map>
#include <string>

namespace corvanel {

/// Where a room tells how its session stands, and whether it is there at all: "corvanel/Hall
/// A/state". What a topic cannot hold of the room's name is left out of it.
std::string StateTopic(const std::string& room);
std::string HereTopic(const std::string& room);
/// The topics of all rooms.
constexpr const char* kEveryState = "corvanel/+/state";
constexpr const char* kEveryHere = "corvanel/+/here";
/// Texts under a room's second topic.
constexpr const char* kHere = "1";
constexpr const char* kGone = "0";
/// A room says again how it stands after so many seconds without a change.
constexpr double kBeat = 15;

/// What a broker carried.
struct BrokerWord {
  std::string topic;
  std::string text;
  bool kept = false;  // the broker had it already when it was asked
  double at = 0;      // uptime at which it came
};

/// The rooms that tell a broker how their sessions stand, each by its own computer's clock. The
/// pages of rooms are told of all of them.
class Rooms {
 public:
  /// Takes over what came; what cannot be understood, and what is more than a page could show,
  /// changes nothing.
  void Hear(const BrokerWord& word);
  /// All rooms, as docs/network.md describes it, at the uptime `now`. The same text as long as
  /// nothing changes but the time.
  std::string Text(double now) const;

 private:
  struct Room {
    std::string clock;        // the run of its computer
    std::string told;         // how its session stands, without the time at which it was told
    double toldAt = 0;        // by its own clock
    std::deque<double> lags;  // how far our clock was ahead of its own, by the latest live words
    bool here = false;
    double heard = 0;  // uptime
  };
  void HearState(Room& room, const BrokerWord& word);

  std::map<std::string, Room> rooms_;  // by the name in the topic
};

}  // namespace corvanel
