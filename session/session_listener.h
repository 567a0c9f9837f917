#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "basics/runtime_error.h"
#include "session/clock_face.h"
#include "session/notices.h"
#include "session/progress_face.h"

namespace corvanel {

/// What happened in the session. Undo and Continue put it somewhere else than it was.
enum class EventKind { Round, Warning, Sound, Move, Break, Pause, Resume, End, Undo, Continue };

/// The events' names in logs and listings, indexed by EventKind.
inline constexpr std::array<std::string_view, 10> kEventNames = {
    "round", "warning", "sound", "move", "break", "pause", "resume", "end", "undo", "continue"};

/// Whoever shows the session or keeps a record of it. Each takes what it needs of all this; the
/// rest does nothing.
class SessionListener {
 public:
  virtual ~SessionListener() = default;
  /// The face changed, or a second passed.
  virtual void ShowFace(const ClockFace& /*face*/) {}
  /// The time of day, written in the director's form.
  virtual void ShowTimeOfDay(const std::string& /*time*/) {}
  /// How far the tables are.
  virtual void ShowTables(const ProgressFace& /*tables*/) {}
  /// The lines for the director.
  virtual void ShowNotices(const std::vector<Notice>& /*notices*/) {}
  /// The name of the table-top unit in use, and the scoring file that is open (empty: none).
  virtual void ShowScoring(const std::string& /*unit*/, const std::string& /*file*/) {}
  /// `text` says which round, cue, ... it was.
  virtual void Happened(EventKind /*kind*/, const std::string& /*text*/) {}
};

/// Hands everything on to all listeners, in the order in which they were added. What goes wrong in
/// one of them is reported and keeps nothing from the others.
class Broadcast : public SessionListener {
 public:
  explicit Broadcast(ErrorTrap& errors) : errors_(errors) {}
  /// The listener must live as long as the broadcast is used.
  void Add(SessionListener& listener) { listeners_.push_back(&listener); }

  void ShowFace(const ClockFace& face) override;
  void ShowTimeOfDay(const std::string& time) override;
  void ShowTables(const ProgressFace& tables) override;
  void ShowNotices(const std::vector<Notice>& notices) override;
  void ShowScoring(const std::string& unit, const std::string& file) override;
  void Happened(EventKind kind, const std::string& text) override;

 private:
  template <class Call>
  void ForEach(std::string_view place, Call call);

  ErrorTrap& errors_;
  std::vector<SessionListener*> listeners_;
};

}  // namespace corvanel
