#include "tools/pictures/states.h"

#include "session/captions.h"

namespace corvanel {
namespace {

/// Tables 1 to `count` of each section; every fifth is slow, every third plays, the last sits out.
ProgressFace Tables(const std::vector<size_t>& sections) {
  ProgressFace face;
  for (const size_t count : sections) {
    SectionCells cells;
    if (sections.size() > 1) cells.letter = static_cast<char>('A' + face.sections.size());
    for (size_t table = 1; table <= count; ++table) {
      TableCell cell{std::to_string(table), TableState::Finished, "", ""};
      if (table == count) cell = {cell.number, TableState::NotPlaying, "NP", ""};
      if (table % 10 == 7) cell = {cell.number, TableState::Playing, "2/3", ""};
      if (table % 10 == 5) cell = {cell.number, TableState::Slow, "1/3", ""};
      cells.cells.push_back(cell);
    }
    face.sections.push_back(cells);
  }
  face.info = "Bridgemate: 5 of 7 tables finished";
  return face;
}

ClockFace Face(Phase phase, Element style, const char* countdown, const std::string& caption) {
  ClockFace face;
  face.phase = phase;
  face.round = 4;
  face.can = {.pause = true, .nextRound = true, .restart = true, .minutes = true};
  face.undo = "Undo next round, 12 s ago";
  face.countdownStyle = style;
  face.countdown = countdown;
  face.caption = caption;
  face.finish = "Finish at 22:31";
  face.schedule.breakEnd = ClockTime::At(21, 8);
  if (phase == Phase::Round) face.breakLine = "Break:20:53 End:21:08";
  return face;
}

/// The states in which tables are shown.
void AddTables(std::vector<PictureState>& states) {
  const ClockFace round = states[0].face;
  const ClockFace warning = states[2].face;
  const ClockFace move = states[3].face;
  ClockFace held = warning;
  held.countdown = "0:10";
  held.paused = true;
  ProgressFace eight = Tables({8});
  states.push_back({"8 tables finished", round, eight});
  eight.lines = {"Last board not started at table 5", "Tables 5 7 still playing"};
  states.push_back({"8 tables", round, eight});
  states.push_back({"8 tables, last warning", warning, eight});
  ProgressFace waited = eight;
  waited.waiting = "WAITING FOR TABLES 5 7";
  states.push_back({"8 tables, waiting", held, waited});
  states.push_back({"8 tables, paused", states[7].face, eight});
  states.push_back({"8 tables, move", move, Tables({8})});
  ProgressFace two = Tables({7, 4});
  two.lines = {"Tables A5 A7 still playing"};
  states.push_back({"11 tables in two sections", round, two});
  ProgressFace forty = Tables({40});
  forty.lines = {"4 slow tables", "8 tables playing"};
  states.push_back({"40 tables", round, forty});
  ProgressFace many = Tables(std::vector<size_t>(8, 25));
  many.lines = {"16 slow tables", "40 tables playing"};
  states.push_back({"200 tables", warning, many});
}

}  // namespace

std::vector<PictureState> PictureStates(const SessionSettings& settings) {
  const std::string fourth = RoundCaption(4, settings.nRounds);
  std::vector<PictureState> states = {
      {"round", Face(Phase::Round, Element::TimeRemaining, "12:47", fourth)},
      {"early warning", Face(Phase::Round, Element::EarlyWarning, "6:58", fourth)},
      {"last warning", Face(Phase::Round, Element::LastWarning, "2:59", fourth)},
      {"move", Face(Phase::Move, Element::TimeUp, "0:46", fourth)},
      {"last move", Face(Phase::Move, Element::TimeUp, "0:46", fourth)},
      {"break", Face(Phase::Break, Element::TimeRemaining, "14:20", std::string(kBreakCaption))},
      {"end of break",
       Face(Phase::Break, Element::LastWarning, "1:30", std::string(kBreakCaption))},
      {"paused", Face(Phase::Round, Element::TimeRemaining, "12:47", fourth)},
      {"ended", Face(Phase::Ended, Element::TimeUp, "0:00", "Final Round of 12")},
  };
  states[3].face.message = "MOVE FOR ROUND 5";
  states[4].face.message = MoveMessage(settings, settings.nRounds - 1);
  states[7].face.paused = true;
  states[7].face.can = {.resume = true, .nextRound = true, .restart = true};
  AddTables(states);
  return states;
}

void ShapeForPictures(Session& session) {
  SessionSettings& s = session.settings;
  s.nRounds = 8;
  s.MinPerRound = 20;
  s.Skip = "7";
  s.Arrow = "7";
  s.optBreak = true;
  s.BreakAfterRound = 4;
  s.Header = "Friday Pairs";
  s.ExtraMonitor = true;
  session.options.BMShowProgress = session.options.BMShowTables = true;
}

}  // namespace corvanel
