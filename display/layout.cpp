#include "display/layout.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace corvanel {
namespace {

constexpr double kMarginTwips = 1000;    // of width and of height, both sides together
constexpr double kProbePoints = 100;     // sizes are measured at, and scaled from
constexpr double kGap = 0.012;           // of the height, between rows
constexpr double kPanelPadding = 0.055;  // of the panel's height, above and below the digits
constexpr int kAttempts = 24;            // at ever smaller texts around the countdown
constexpr double kSmaller = 0.94;        // each attempt
constexpr int kMostLines = 3;            // of one text
constexpr double kMoreLinesPay = 1.2;    // a further line must let the text grow by this

// Heights of capitals and digits as shares of the window's height: what players with weak eyes read
// from the back wall.
constexpr double kTag = 0.0405;
constexpr double kLarge = 0.1;
constexpr double kLeastLarge = 0.073;
constexpr double kMessage = 0.15;
constexpr double kDigitsOfMove = 0.22;
constexpr double kDigitsOfMoveAboveTables = 0.31;
constexpr double kLeastDigits = 0.4;
constexpr double kLeastDigitsAboveRow = 0.372;   // of tables
constexpr double kLeastDigitsAboveRows = 0.305;  // of tables
constexpr double kOneRow = 0.12;                 // height of a grid that is still one row

constexpr double kCaptionBesideLarge = 0.6;  // of its own size
constexpr double kBesideNews = 0.85;         // of the other texts' own sizes
constexpr double kLeastScale = 0.52;         // of the same, where the window is large enough
constexpr double kLineOfCapitals = 1.45;     // height of a line for that of its capitals
constexpr double kTagInset = 0.28;           // of its height, from the panel's edges
constexpr double kTagBand = 1.6;             // height of a band above the digits for its capitals

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

/// A text's size in a room of its own.
struct Fitted {
  double points = 0;
  int lines = 1;
  double height = 0;  // pixels
  bool capitals = false;
};

struct Room {
  double width = 0;
  double height = 0;
  double mostPoints = 0;
  bool capitals = false;
  double moreLinesPay = kMoreLinesPay;
};

/// The largest size, down to the least one, at which the text fits the room in a few lines.
Fitted Fit(const std::string& text, const ElementStyle& style, const Room& room,
           const TextMeasure& measure) {
  if (text.find_first_not_of(' ') == std::string::npos) return {};
  // A hair more for what line heights are rounded up by at other sizes.
  const double lineHeight =
      room.capitals ? kLineOfCapitals * measure.Digits("0", style, 1).height
                    : 1.015 * measure.Line(text, style, kProbePoints).height / kProbePoints;
  Fitted best;
  for (int count = 1; count <= kMostLines; ++count) {
    const auto lines = Balance(text, count, style, kProbePoints, measure);
    const double width = WidestLine(lines, style, kProbePoints, measure) / kProbePoints;
    // A hair less, since widths do not scale quite evenly.
    const double points =
        std::min({room.mostPoints, 0.985 * room.width / width,
                  room.height / (lineHeight * static_cast<double>(lines.size()))});
    const bool stillTooSmall = best.points < kLeastTextPoints && points > best.points;
    if (stillTooSmall || points > best.points * room.moreLinesPay) {
      best = {points, static_cast<int>(lines.size()), 0};
    }
  }
  if (best.points < kLeastTextPoints) {
    const auto lines = Fill(text, room.width, style, kLeastTextPoints, measure);
    best = {kLeastTextPoints, std::min(static_cast<int>(lines.size()), kMostLines), 0};
  }
  best.height = best.points * lineHeight * best.lines;
  best.capitals = room.capitals;
  return best;
}

// The four colours of the countdown may have four fonts; its size must not jump between them.
constexpr std::array kCountdowns = {Element::TimeRemaining, Element::LastWarning, Element::TimeUp,
                                    Element::EarlyWarning};

struct Rows {
  Fitted header;
  Fitted now;
  Fitted large;
  Fitted caption;
  Fitted finish;
  Fitted unit;
  double gap = 0;
  double panel = 0;  // height that remains for the countdown's panel

  double Height() const {
    double height = 0;
    for (const Fitted* row : {&header, &now, &large, &caption, &finish, &unit}) {
      if (row->points > 0) height += row->height + gap;
    }
    return height;
  }
  int Count() const {
    int count = 0;
    for (const Fitted* row : {&header, &now, &large, &caption, &finish, &unit}) {
      count += row->points > 0 ? 1 : 0;
    }
    return count;
  }
};

/// The countdown in its panel.
struct Digits {
  double points = 0;
  double height = 0;       // pixels
  double band = 0;         // free above them for the tag, and below; 0 where it stands beside them
  bool fillWidth = false;  // less height for the rows would not make them larger
};

class Composer {
 public:
  Composer(const LayoutInput& input, const ElementStyles& styles, const TextMeasure& measure)
      : input_(input), styles_(styles), measure_(measure) {
    const double margin = MarginOf(input.width, input.height);
    area_ = {margin, margin, std::max(input.width - 2 * margin, 1.0),
             std::max(input.height - 2 * margin, 1.0)};
    news_ = input.moving && input.texts.large.empty();
    for (size_t i = 0; i < kCountdowns.size(); ++i) {
      tagStyles_[i] = StyleOf(styles, kCountdowns[i]);
      tagStyles_[i].Bold = true;
    }
    tag_ = FitTag();
  }

  Layout Compose() const {
    Rows rows;
    Digits digits;
    double scale = news_ && input_.tables <= 0 ? kBesideNews : 1;
    for (int attempt = 0; attempt < kAttempts; ++attempt, scale *= kSmaller) {
      rows = RowsAt(scale);
      digits = DigitsIn(rows.panel);
      const bool large = digits.height >= LeastDigits() * input_.height || digits.fillWidth;
      const bool smallest = scale * kSmaller < kLeastScale && rows.panel >= LeastPanel();
      if ((large || smallest) && digits.points >= kLeastCountdownPoints &&
          rows.panel >= LeastPanel())
        break;
    }
    return Arrange(rows, digits);
  }

 private:
  double LeastDigits() const {
    if (news_) return kDigitsOfMove * 0.97;
    if (input_.tables <= 0) return kLeastDigits;
    return input_.tables <= kOneRow * input_.height ? kLeastDigitsAboveRow : kLeastDigitsAboveRows;
  }
  /// Above tables the message has one line, and leaves a little more.
  double MostDigitsOfMove() const {
    return input_.height * (input_.tables > 0 ? kDigitsOfMoveAboveTables : kDigitsOfMove);
  }
  /// In a window so low or narrow that nothing is as it should be.
  double LeastPanel() const { return news_ || input_.tables > 0 ? 0 : 0.4 * area_.height; }

  /// The size at which an element's capitals have this height, pixels.
  double PointsFor(double capitals, Element element) const {
    return kProbePoints * capitals /
           measure_.Digits("0", StyleOf(styles_, element), kProbePoints).height;
  }

  Fitted FitRow(const std::string& text, Element element, double mostPoints,
                double mostHeight) const {
    return Fit(text, StyleOf(styles_, element), {area_.width, mostHeight, mostPoints}, measure_);
  }

  Fitted Row(const std::string& text, Element element, double scale) const {
    const double chosen = StyleOf(styles_, element).Size * input_.height / kReferenceHeight;
    return FitRow(text, element, std::max(chosen * scale, kLeastTextPoints), area_.height / 3);
  }

  Rows RowsAt(double scale) const {
    const WidestTexts& texts = input_.texts;
    constexpr Element kCaption = Element::RoundInformation;
    Rows rows;
    rows.gap = kGap * area_.height;
    if (input_.show[kShowTitle]) rows.header = Row(texts.header, Element::Title, scale);
    if (input_.show[0]) rows.now = Row(texts.now, Element::CurrentTime, scale);
    if (input_.show[1]) rows.finish = Row(texts.finish, Element::FinishTime, scale);
    rows.unit = Row(texts.unit, Element::UnitInfo, scale);
    if (!texts.large.empty()) {
      const double capitals = std::max(kLarge * scale, kLeastLarge) * input_.height;
      rows.large = Fit(texts.large, StyleOf(styles_, kCaption),
                       {area_.width, area_.height / 3.5,
                        std::max(PointsFor(capitals, kCaption), kLeastTextPoints), true},
                       measure_);
    }
    if (!news_ && (input_.show[2] || input_.moving)) {
      rows.caption =
          Row(texts.caption, kCaption, texts.large.empty() ? scale : scale * kCaptionBesideLarge);
    }
    rows.panel = area_.height - rows.Height();
    if (input_.tables > 0) rows.panel -= input_.tables + rows.gap;
    if (!news_) return rows;
    // The message takes what the count, at its own size, leaves.
    const double panel =
        std::min(MostDigitsOfMove() / (1 - 2 * kPanelPadding), std::max(rows.panel * 0.4, 1.0));
    const double most = PointsFor(kMessage * input_.height, kCaption);
    rows.caption = Fit(texts.caption, StyleOf(styles_, kCaption),
                       {area_.width, std::max(rows.panel - panel - rows.gap, 1.0),
                        std::max(most, kLeastTextPoints), true, 1},
                       measure_);
    rows.panel -= rows.caption.height + rows.gap;
    return rows;
  }

  /// Each word of "EARLY WARNING" on a line of its own, at a size that holds in all four fonts.
  Fitted FitTag() const {
    Fitted tag{1e9, 2, 0};
    for (const Element element : kCountdowns) {
      tag.points = std::min(tag.points, PointsFor(kTag * input_.height, element));
    }
    tag.points = std::max(tag.points, kLeastTextPoints);
    for (const ElementStyle& style : tagStyles_) {
      const double height = measure_.Line("X", style, tag.points).height;
      tag.height = std::max(tag.height, 2 * height);
    }
    return tag;
  }
  double TagWidth(const std::string& text) const {
    double width = 0;
    for (const ElementStyle& style : tagStyles_) {
      width = std::max(width, measure_.Line(text, style, tag_.points).width);
    }
    return width + tag_.height / 2 * kTagInset * 2;
  }

  /// The size at which a countdown is so wide, or digits so high, in none of the four fonts more.
  double FitWidth(const std::string& text, double width) const {
    double points = 1e9;
    for (const Element element : kCountdowns) {
      const double wide = measure_.Digits(text, StyleOf(styles_, element), kProbePoints).width;
      points = std::min(points, kProbePoints * 0.985 * std::max(width, 1.0) / wide);
    }
    return points;
  }
  double FitHeight(double height) const {
    double points = 1e9;
    for (const Element element : kCountdowns) points = std::min(points, PointsFor(height, element));
    return points;
  }

  Digits DigitsIn(double panel) const {
    const double most = news_ ? MostDigitsOfMove() : input_.height;
    const double width = area_.width * 0.97;
    const auto fit = [&](double band, double mostPoints) {
      const double room = std::max(panel - 2 * std::max(panel * kPanelPadding, band), 1.0);
      const double byWidth = std::min(FitWidth(input_.texts.countdown, width), mostPoints);
      Digits digits{std::min(byWidth, FitHeight(std::min(room, most))), 0, band, false};
      digits.fillWidth = digits.points >= FitWidth(input_.texts.countdown, width);
      digits.height = DigitHeight(digits.points);
      return digits;
    };
    // Beside the tag they may be less wide, and below it less high.
    const Digits below = fit(kTagBand * kTag * input_.height, 1e9);
    const double free = area_.width - 2 * TagWidth("WARNING");
    const Digits beside = fit(0, FitWidth(input_.texts.tagged, free));
    return beside.points >= below.points ? beside : below;
  }

  double DigitHeight(double points) const {
    return measure_.Digits("0", StyleOf(styles_, Element::TimeRemaining), points).height;
  }

  /// A row across the whole width; texts are centred in it.
  TextPlace Put(const Fitted& row, double& y, double gap) const {
    if (row.points == 0) return {};
    const TextPlace placed{
        {area_.x, y, area_.width, row.height}, row.points, row.lines, row.capitals};
    y += row.height + gap;
    return placed;
  }

  Layout Arrange(const Rows& rows, const Digits& digits) const {
    Layout layout;
    // In a window that is high for its width the panel hugs the digits, and the rows spread.
    const double snug = std::min(rows.panel, std::max(digits.height / (1 - 2 * kPanelPadding),
                                                      digits.height + 2 * digits.band));
    const double spread = (rows.panel - snug) / (rows.Count() + (input_.tables > 0 ? 3 : 2));
    const double gap = rows.gap + spread;
    double y = area_.y + spread;
    layout.header = Put(rows.header, y, rows.gap);
    layout.now = Put(rows.now, y, gap);
    layout.panel = {area_.x, y, area_.width, snug};
    PlaceTag(digits, layout);
    y += snug + gap;
    layout.large = Put(rows.large, y, gap);
    layout.caption = Put(rows.caption, y, gap);
    layout.finish = Put(rows.finish, y, gap);
    layout.unit = Put(rows.unit, y, gap);
    layout.tables = {area_.x, area_.Bottom() - input_.tables, area_.width, input_.tables};
    return layout;
  }

  /// The tag in the panel's left upper corner; the digits in its middle.
  void PlaceTag(const Digits& digits, Layout& layout) const {
    const Place& panel = layout.panel;
    const double line = tag_.height / 2;
    const double inset = line * kTagInset;
    layout.countdown = {panel, digits.points, 1};
    if (digits.band > 0) {
      const double above = std::max((panel.height - digits.height) / 2, 1.0);
      layout.tag = {{panel.x + inset, panel.y, panel.width - 2 * inset, above}, tag_.points, 1};
    } else {
      layout.tag = {{panel.x + inset, panel.y + inset, TagWidth("WARNING") - inset,
                     std::min(2 * line, panel.height)},
                    tag_.points,
                    2};
    }
  }

  const LayoutInput& input_;
  const ElementStyles& styles_;
  const TextMeasure& measure_;
  // Kept, since what was measured is remembered by the style's address.
  std::array<ElementStyle, kCountdowns.size()> tagStyles_;
  bool news_ = false;  // the move message is what matters
  Fitted tag_;
  Place area_;
};

}  // namespace

double MarginOf(double width, double height) {
  return std::max(kMarginTwips / kTwipsPerPixel / 2, 0.03 * std::min(width, height));
}

Layout LayOut(const LayoutInput& input, const ElementStyles& styles, const TextMeasure& measure) {
  const Remembering remembering(measure);
  return Composer(input, styles, remembering).Compose();
}

}  // namespace corvanel
