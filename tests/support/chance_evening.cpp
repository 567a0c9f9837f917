#include "tests/support/chance_evening.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace corvanel {
namespace {

constexpr double kPatience = 15;     // seconds in which polls must have noticed what there is
constexpr double kDrawnAfter = 120;  // seconds of a round, when the next one is drawn
constexpr double kNever = 1e9;

}  // namespace

ChanceEvening::ChanceEvening(unsigned seed)
    : dice_(seed),
      rounds_(dice_.Below(3, 5)),
      boards_(dice_.Below(2, 3)),
      picture_(AnyMovement(dice_, rounds_, boards_)),
      followed_({1}),
      drawn_(dice_.Chance(0.2)),
      slow_(1, static_cast<int16_t>(dice_.Below(1, picture_.sections[0].Tables))),
      dead_(dice_.Chance(0.25) ? TableId(1, picture_.sections[0].Tables) : TableId(0, 0)),
      swapFrom_(dice_.Chance(0.3) ? dice_.Between(300, 2400) : kNever),
      swapUntil_(swapFrom_ + dice_.Between(60, 900)),
      deadCounts_(dead_.first != 0) {
  const bool both = picture_.sections.size() == 2 && dice_.Chance(0.6);
  if (both) followed_.insert(2);
  bench_.sectionAnswers = {true, both};
  bench_.session.options.BMMinPerBoard = 4;
  Open();
  bench_.clocks.clock.Start(1);
}

void ChanceEvening::Open() {
  bench_.Open(Written(1));
  SessionSettings& s = bench_.session.settings;
  // Of rounds that are not drawn yet only the director knows how many there will be.
  s.nRounds = static_cast<int16_t>(rounds_);
  s.optBreak = dice_.Chance(0.5);
  s.BreakAfterRound = 2;
  s.TimeForBreak = 6;
  s.MinBetweenRounds = 0.5;
}

void ChanceEvening::Play() {
  for (double now = 0; now < 5 * 3600 && State().phase != Phase::Ended; now += kPollSeconds) {
    if (State().phase == Phase::Round && State().round != played_) BeginRound(now);
    Deliver(now);
    const ClockState before = State();
    const double left = bench_.clocks.clock.Now().secondsLeft;
    bench_.PassWithPolls(kPollSeconds);
    Judge(now + kPollSeconds, before, left);
    Look();
    LeaveOutWhoIsNamed();
  }
  EXPECT_EQ(State().phase, Phase::Ended);
  EXPECT_EQ(State().round, rounds_);
}

bool ChanceEvening::Follows(const RoundRow& row) const {
  return followed_.contains(row.Section) && TableId(row.Section, row.Table) != dead_;
}

std::string ChanceEvening::LabelOf(TableId table) const {
  return (followed_.size() > 1 ? std::string(1, static_cast<char>('A' + table.first - 1)) : "") +
         std::to_string(table.second);
}

std::vector<std::string> ChanceEvening::Playing() const {
  std::vector<std::string> playing;
  for (const RoundRow& row : picture_.rounds) {
    if (row.round != played_ || !Follows(row) || !IsPlayed(picture_, row)) continue;
    if (Standing(row) < BoardsOf(row).size()) playing.push_back(LabelOf({row.Section, row.Table}));
  }
  return playing;
}

/// What each table will do in the round that has begun. Sections that nobody follows play as well,
/// at a pace that would upset everything.
void ChanceEvening::BeginRound(double now) {
  played_ = State().round;
  began_ = now;
  swappedInRound_ = false;
  for (const RoundRow& row : picture_.rounds) {
    const TableId table(row.Section, row.Table);
    if (row.round != played_ || table == dead_ || !IsPlayed(picture_, row)) continue;
    double& at = free_[table];
    at = std::max(now, at);
    for (const int16_t board : BoardsOf(row)) {
      const double pace = table == slow_ ? 1.4 : followed_.contains(row.Section) ? 1 : 3;
      at += 60 * dice_.Between(2.6, 3.9) * pace;
      SendBoard(row, board, at);
    }
  }
}

void ChanceEvening::SendBoard(const RoundRow& played, int16_t board, double at) {
  ResultRow row = ResultOf(played.Table, played_, board);
  row.Section = played.Section;
  // The clock of a unit may be off by years, and is not what matters.
  row.stamp.seconds += std::llround(at) - (played.Table == 2 ? 9LL * 365 * 86400 : 0);
  const double sent = at + (dice_.Chance(0.1) ? dice_.Between(5, 40) : 0);
  due_.push_back({sent, row});
  if (dice_.Chance(0.05)) due_.push_back({sent + 8, row});
  if (dice_.Chance(0.06)) {
    ResultRow erased = row;
    erased.Erased = -1;
    due_.push_back({sent + 20, erased});
    due_.push_back({sent + 45, row});
  }
  if (dice_.Chance(0.03)) {
    due_.push_back({sent + 30, row, true});
    due_.push_back({sent + 60, row});
  }
}

void ChanceEvening::Deliver(double now) {
  std::stable_sort(due_.begin(), due_.end(),
                   [](const Sending& a, const Sending& b) { return a.at < b.at; });
  while (!due_.empty() && due_.front().at <= now) {
    const Sending next = due_.front();
    due_.erase(due_.begin());
    std::vector<ResultRow>& rows = picture_.received;
    if (next.takenAway) {
      std::erase(rows, next.row);
    } else {
      rows.push_back(next.row);
    }
    changed_ = now;
  }
  swapped_ = now >= swapFrom_ && now < swapUntil_;
  if (swapped_ && !swappedInRound_) changed_ = now;
  swappedInRound_ |= swapped_;
  const int drawn = std::max<int>(played_, 1) + (now > began_ + kDrawnAfter ? 1 : 0);
  const auto content = std::tuple(swapped_, drawn, changed_);
  if (content == content_) return;
  content_ = content;
  bench_.Write(swapped_ ? AnotherEvening() : Written(drawn));
}

/// One that has all its results.
ScoringPicture ChanceEvening::AnotherEvening() const {
  ScoringPicture other = Mitchell(4, rounds_, boards_);
  other.sessionName = "Another evening";
  for (const RoundRow& row : other.rounds) {
    for (const int16_t board : BoardsOf(row)) {
      other.received.push_back(ResultOf(row.Table, row.round, board));
    }
  }
  return other;
}

ScoringPicture ChanceEvening::Written(int drawn) const {
  ScoringPicture written = picture_;
  std::erase_if(written.rounds, [&](const RoundRow& row) { return drawn_ && row.round > drawn; });
  return written;
}

/// The boards of a row whose results stand in the file.
size_t ChanceEvening::Standing(const RoundRow& row) const {
  std::map<int16_t, int> sums;
  for (const ResultRow& sent : picture_.received) {
    if (sent.Section != row.Section || sent.Table != row.Table || sent.round != row.round) continue;
    sums[sent.Board] += sent.Erased == 0 ? 1 : -1;
  }
  return static_cast<size_t>(
      std::count_if(sums.begin(), sums.end(), [](const auto& b) { return b.second > 0; }));
}

void ChanceEvening::Judge(double now, const ClockState& before, double left) {
  if (State().round != played_) return;  // the next round has begun just now
  const std::vector<std::string> playing = Playing();
  const bool ended = before.phase == Phase::Round && State().phase != Phase::Round;
  if (ended && left > kPollSeconds) {
    EXPECT_TRUE(playing.empty() && !swapped_)
        << "ended with a table playing, round " << played_ << " at " << now;
  }
  const bool settled = now - changed_ > kPatience;
  const auto limit = static_cast<size_t>(bench_.session.options.BMPauseTables);
  if (State().autoPaused && settled) {
    EXPECT_GT(playing.size() + (deadCounts_ ? 1 : 0), limit)
        << "held for nobody, round " << played_ << " at " << now;
    EXPECT_FALSE(swapped_) << "held for another session";
  }
  // Where the file was another one, a round that all have finished is not ended any more.
  if (State().phase == Phase::Round && settled && playing.empty() && !deadCounts_ &&
      !swappedInRound_) {
    ADD_FAILURE() << "round " << played_ << " goes on with nobody playing at " << now;
  }
  for (const std::string& line : bench_.face.lines) {
    if (swapped_ || (!line.starts_with("Tables ") && !line.starts_with("Table "))) continue;
    for (const std::string& table : playing) {
      EXPECT_NE((line + ' ').find(' ' + table + ' '), std::string::npos)
          << line << " without table " << table;
    }
  }
}

void ChanceEvening::LeaveOutWhoIsNamed() {
  if (const auto silent = bench_.monitor.SilentTable(LabelOf(dead_)); silent) {
    bench_.link.LeaveOut(*silent);
  }
  deadCounts_ = dead_.first != 0 && bench_.link.LeftOut().empty();
}

}  // namespace corvanel
