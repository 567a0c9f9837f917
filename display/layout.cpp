#include "display/layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "session/captions.h"
#include "session/countdown.h"

namespace corvanel {
namespace {

constexpr double kMarginTwips = 1000;       // of width and of height, both sides together
constexpr double kProbePoints = 100;        // sizes are measured at, and scaled from
constexpr double kMoveMessageShare = 0.34;  // of the height, for the big message
constexpr double kTagPoints = 22;           // at the reference height
constexpr double kGap = 0.014;              // of the height, between rows
constexpr double kPanelPadding = 0.055;     // of the panel's height, above and below the digits
constexpr int kAttempts = 24;               // at ever smaller texts around the countdown
constexpr int kMostLines = 3;               // of one text
constexpr double kMoreLinesPay = 1.2;       // a further line must let the text grow by this

/// Remembers what has been measured: placing everything asks for the same few texts again and
/// again.
class Remembering : public TextMeasure {
 public:
  explicit Remembering(const TextMeasure& measure) : measure_(measure) {}
  Extent Line(const std::string& text, const ElementStyle& style, double points) const override {
    const auto [entry, added] = lines_.try_emplace({&style, points, text});
    if (added) entry->second = measure_.Line(text, style, points);
    return entry->second;
  }
  Extent Digits(const std::string& text, const ElementStyle& style, double points) const override {
    const auto [entry, added] = digits_.try_emplace({&style, points, text});
    if (added) entry->second = measure_.Digits(text, style, points);
    return entry->second;
  }

 private:
  using Key = std::tuple<const ElementStyle*, double, std::string>;
  const TextMeasure& measure_;
  mutable std::map<Key, Extent> lines_;
  mutable std::map<Key, Extent> digits_;
};

const ElementStyle& StyleOf(const ElementStyles& styles, Element element) {
  return styles[static_cast<size_t>(element)];
}

std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words;
  size_t start = 0;
  while ((start = text.find_first_not_of(' ', start)) != std::string::npos) {
    const size_t end = std::min(text.find(' ', start), text.size());
    words.push_back(text.substr(start, end - start));
    start = end;
  }
  return words;
}

/// Fills lines word by word, none wider than `width` where a single word allows it.
std::vector<std::string> Fill(const std::vector<std::string>& words, double width,
                              const ElementStyle& style, double points,
                              const TextMeasure& measure) {
  std::vector<std::string> lines;
  for (const std::string& word : words) {
    const std::string longer = lines.empty() ? word : lines.back() + ' ' + word;
    if (!lines.empty() && measure.Line(longer, style, points).width <= width) {
      lines.back() = longer;
    } else {
      lines.push_back(word);
    }
  }
  return lines;
}

double WidestLine(const std::vector<std::string>& lines, const ElementStyle& style, double points,
                  const TextMeasure& measure) {
  double widest = 0;
  for (const std::string& line : lines) {
    widest = std::max(widest, measure.Line(line, style, points).width);
  }
  return widest;
}

/// The most even way to break words into at most `count` lines.
std::vector<std::string> Balance(const std::vector<std::string>& words, int count,
                                 const ElementStyle& style, double points,
                                 const TextMeasure& measure) {
  double low = WidestLine(words, style, points, measure);
  double high = WidestLine(Fill(words, 1e9, style, points, measure), style, points, measure);
  std::vector<std::string> best = Fill(words, high, style, points, measure);
  if (count == 1) return best;
  best = Fill(words, std::max(high / count, low), style, points, measure);
  for (int step = 0; step < 12; ++step) {
    const double width = (low + high) / 2;
    const auto lines = Fill(words, width, style, points, measure);
    if (static_cast<int>(lines.size()) > count) {
      low = width;
    } else {
      high = width;
      best = lines;
    }
  }
  return best;
}

/// A text's size in a room of its own.
struct Fitted {
  double points = 0;
  int lines = 1;
  double height = 0;  // pixels
};

struct Room {
  double width = 0;
  double height = 0;
  double mostPoints = 0;
};

/// The largest size, down to the least one, at which the text fits the room in a few lines.
Fitted Fit(const std::string& text, const ElementStyle& style, const Room& room,
           const TextMeasure& measure) {
  const std::vector<std::string> words = Words(text);
  if (words.empty()) return {};
  // A hair more for what line heights are rounded up by at other sizes.
  const double lineHeight = 1.015 * measure.Line(text, style, kProbePoints).height / kProbePoints;
  Fitted best;
  for (int count = 1; count <= kMostLines; ++count) {
    const auto lines = Balance(words, count, style, kProbePoints, measure);
    const double width = WidestLine(lines, style, kProbePoints, measure) / kProbePoints;
    // A hair less, since widths do not scale quite evenly.
    const double points =
        std::min({room.mostPoints, 0.985 * room.width / width,
                  room.height / (lineHeight * static_cast<double>(lines.size()))});
    const bool stillTooSmall = best.points < kLeastTextPoints && points > best.points;
    if (stillTooSmall || points > best.points * kMoreLinesPay) {
      best = {points, static_cast<int>(lines.size()), 0};
    }
  }
  if (best.points < kLeastTextPoints) {
    const auto lines = Fill(words, room.width, style, kLeastTextPoints, measure);
    best = {kLeastTextPoints, std::min(static_cast<int>(lines.size()), kMostLines), 0};
  }
  best.height = best.points * lineHeight * best.lines;
  return best;
}

double FitDigits(const std::string& text, const ElementStyles& styles, double width, double height,
                 const TextMeasure& measure) {
  double points = 1e9;
  // The four colours of the countdown may have four fonts; its size must not jump between them.
  for (const Element element :
       {Element::TimeRemaining, Element::LastWarning, Element::TimeUp, Element::EarlyWarning}) {
    const Extent digits = measure.Digits(text, StyleOf(styles, element), kProbePoints);
    points = std::min({points, kProbePoints * 0.985 * width / digits.width,
                       kProbePoints * height / digits.height});
  }
  return points;
}

/// All rows but the countdown's, with the sizes of the smaller texts taken down by `scale`.
struct Rows {
  Fitted header;
  Fitted now;
  Fitted tag;
  Fitted caption;
  Fitted finish;
  Fitted unit;
  double gap = 0;
  double panel = 0;  // height that remains for the countdown's panel
};

class Composer {
 public:
  Composer(const LayoutInput& input, const ElementStyles& styles, const TextMeasure& measure)
      : input_(input), styles_(styles), measure_(measure) {
    const double margin =
        std::max(kMarginTwips / kTwipsPerPixel / 2, 0.03 * std::min(input.width, input.height));
    area_ = {margin, margin, std::max(input.width - 2 * margin, 1.0),
             std::max(input.height - 2 * margin, 1.0)};
  }

  Layout Compose() const {
    Rows rows;
    double points = 0;
    double scale = 1;
    for (int attempt = 0; attempt < kAttempts; ++attempt, scale *= 0.88) {
      rows = RowsAt(scale);
      points = DigitPoints(rows);
      if (points >= kLeastCountdownPoints && rows.panel >= 0.4 * area_.height) break;
    }
    return Arrange(rows, points);
  }

 private:
  Fitted FitRow(const std::string& text, Element element, double mostPoints,
                double mostHeight) const {
    return Fit(text, StyleOf(styles_, element), {area_.width, mostHeight, mostPoints}, measure_);
  }

  Fitted Row(const std::string& text, Element element, double scale) const {
    const double chosen = StyleOf(styles_, element).Size * input_.height / kReferenceHeight;
    return FitRow(text, element, std::max(chosen * scale, kLeastTextPoints), area_.height / 3);
  }

  Rows RowsAt(double scale) const {
    Rows rows;
    rows.gap = kGap * area_.height;
    if (input_.show[kShowTitle]) rows.header = Row(input_.texts.header, Element::Title, scale);
    if (input_.show[0]) rows.now = Row(input_.texts.now, Element::CurrentTime, scale);
    if (input_.show[1]) rows.finish = Row(input_.texts.finish, Element::FinishTime, scale);
    rows.unit = Row(input_.texts.unit, Element::UnitInfo, scale);
    if (input_.moving) {
      rows.caption = FitRow(input_.texts.message, Element::RoundInformation, 1e9,
                            kMoveMessageShare * scale * area_.height);
    } else if (input_.show[2]) {
      rows.caption = Row(input_.texts.caption, Element::RoundInformation, scale);
    }
    const double tagPoints =
        std::max(kTagPoints * scale * input_.height / kReferenceHeight, kLeastTextPoints);
    rows.tag = FitRow(StateWord(Phase::Round, false, Element::EarlyWarning), Element::TimeUp,
                      tagPoints, area_.height);
    double used = 0;
    for (const Fitted* row : {&rows.header, &rows.now, &rows.caption, &rows.finish, &rows.unit}) {
      if (row->points > 0) used += row->height + rows.gap;
    }
    rows.panel = area_.height - used;
    return rows;
  }

  double DigitRoom(const Rows& rows) const {
    return rows.panel * (1 - 2 * kPanelPadding) - rows.tag.height;
  }

  double DigitPoints(const Rows& rows) const {
    return FitDigits(input_.texts.countdown, styles_, area_.width * 0.97, DigitRoom(rows),
                     measure_);
  }

  /// A row across the whole width; texts are centred in it.
  TextPlace Put(const Fitted& row, double& y, double gap) const {
    if (row.points == 0) return {};
    const TextPlace placed{{area_.x, y, area_.width, row.height}, row.points, row.lines};
    y += row.height + gap;
    return placed;
  }

  Layout Arrange(const Rows& rows, double points) const {
    Layout layout;
    const double digits =
        measure_.Digits(input_.texts.countdown, StyleOf(styles_, Element::TimeRemaining), points)
            .height;
    // In a window that is high for its width the panel hugs the digits, and the rows spread.
    const double snug = std::min(rows.panel, digits * 1.3 + rows.tag.height * 2);
    const int gaps = 6;
    const double gap = rows.gap + (rows.panel - snug) / gaps;
    double y = area_.y + (rows.panel - snug) / gaps;
    layout.header = Put(rows.header, y, rows.header.points > 0 ? rows.gap : 0);
    layout.now = Put(rows.now, y, gap);
    layout.panel = {area_.x, y, area_.width, snug};
    layout.tag = {{area_.x + rows.tag.height * 0.5, y + snug * kPanelPadding,
                   area_.width - rows.tag.height, rows.tag.height},
                  rows.tag.points,
                  1};
    const double top = layout.tag.place.Bottom();
    layout.countdown = {
        {area_.x, top, area_.width, y + snug * (1 - kPanelPadding) - top}, points, 1};
    y += snug + gap;
    layout.caption = Put(rows.caption, y, gap);
    layout.finish = Put(rows.finish, y, gap);
    layout.unit = Put(rows.unit, y, gap);
    return layout;
  }

  const LayoutInput& input_;
  const ElementStyles& styles_;
  const TextMeasure& measure_;
  Place area_;
};

/// Takes off the last character, of one byte or of several.
void PopCharacter(std::string& text) {
  const auto continues = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
  };
  while (!text.empty() && continues(text.back())) text.pop_back();
  if (!text.empty()) text.pop_back();
}

std::string Elided(std::string text, double width, const ElementStyle& style, double points,
                   const TextMeasure& measure) {
  if (measure.Line(text, style, points).width <= width) return text;
  const std::string ellipsis = "…";
  while (!text.empty() && measure.Line(text + ellipsis, style, points).width > width) {
    PopCharacter(text);
  }
  return text + ellipsis;
}

}  // namespace

Layout LayOut(const LayoutInput& input, const ElementStyles& styles, const TextMeasure& measure) {
  const Remembering remembering(measure);
  return Composer(input, styles, remembering).Compose();
}

std::vector<std::string> BreakLines(const std::string& text, int lines, double width,
                                    const ElementStyle& style, double points,
                                    const TextMeasure& measure) {
  const std::vector<std::string> words = Words(text);
  if (words.empty()) return {};
  // As few lines as the width allows: a short text keeps to one.
  std::vector<std::string> broken;
  for (int count = 1; count <= lines; ++count) {
    broken = Balance(words, count, style, points, measure);
    if (WidestLine(broken, style, points, measure) <= width) return broken;
  }
  broken = Fill(words, width, style, points, measure);
  while (static_cast<int>(broken.size()) > lines) {
    broken[broken.size() - 2] += ' ' + broken.back();
    broken.pop_back();
  }
  for (std::string& line : broken) line = Elided(line, width, style, points, measure);
  return broken;
}

WidestTexts WidestTextsOf(const Session& session, double secondsLeft) {
  const SessionSettings& s = session.settings;
  const TimeForm form = session.options.Form();
  const ClockTime widestTime = ClockTime::At(22, 58);
  WidestTexts texts;
  if (session.options.Show[kShowTitle]) texts.header = ShownTitle(s.Header);
  texts.now = TimeText(widestTime, form);
  const double longest = std::max({s.MinPerRound * 60.0, s.MinBetweenRounds * 60.0,
                                   s.optBreak ? s.TimeForBreak * 60.0 : 0.0, secondsLeft});
  const double shown = ShownSeconds(longest, CountdownStep(session.options.TimeChange));
  // All digits take the same room, so only their number counts.
  texts.countdown =
      std::string(std::to_string(std::lround(std::floor(shown / 60))).size(), '8') + ":00";
  texts.caption = s.nRounds < 100 ? RoundCaption(22, 28) : RoundCaption(222, 228);
  for (int round = 1; round < std::min<int>(s.nRounds, 100); ++round) {
    const std::string message = MoveMessage(s, round);
    if (message.size() > texts.message.size()) texts.message = message;
  }
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

std::string StateWord(Phase phase, bool paused, Element countdownStyle) {
  if (paused) return "PAUSED";
  if (phase == Phase::Break) return "BREAK";
  switch (countdownStyle) {
    case Element::EarlyWarning:
      return "EARLY WARNING";
    case Element::LastWarning:
      return "LAST WARNING";
    case Element::TimeUp:
      return "TIME UP";
    default:
      return {};
  }
}

}  // namespace corvanel
