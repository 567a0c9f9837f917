#include "display/widest_texts.h"

#include <algorithm>
#include <cmath>

#include "session/captions.h"
#include "session/countdown.h"

namespace corvanel {
namespace {

/// All digits take the same room, so only their number counts.
std::string WidestCountdown(double seconds, int step) {
  const double minutes = std::floor(ShownSeconds(seconds, step) / 60);
  return std::string(std::to_string(std::lround(minutes)).size(), '8') + ":00";
}

}  // namespace

WidestTexts WidestTextsOf(const Session& session, double secondsLeft) {
  const SessionSettings& s = session.settings;
  const TimeForm form = session.options.Form();
  const ClockTime widestTime = ClockTime::At(22, 58);
  WidestTexts texts;
  if (session.options.Show[kShowTitle]) texts.header = ShownTitle(s.Header);
  texts.now = TimeText(widestTime, form);
  const double longest = std::max({s.MinPerRound * 60.0, s.MinBetweenRounds * 60.0,
                                   s.optBreak ? s.TimeForBreak * 60.0 : 0.0, secondsLeft});
  const int step = CountdownStep(session.options.TimeChange);
  texts.countdown = WidestCountdown(longest, step);
  texts.tagged = WidestCountdown(
      std::max({s.MinWarning * 60.0, s.MinWarning1 * 60.0, s.MinBetweenRounds * 60.0}), step);
  texts.caption = s.nRounds < 100 ? RoundCaption(22, 28) : RoundCaption(222, 228);
  texts.finish = FinishLine(widestTime, form);
  if (s.optBreak) {
    texts.finish =
        FinishAndBreak(texts.finish, BreakLine({widestTime, widestTime, widestTime}, form));
  }
  return texts;
}

std::string FinishAndBreak(const std::string& finish, const std::string& breakLine) {
  return breakLine.empty() ? finish : finish + " · " + breakLine;
}

}  // namespace corvanel
