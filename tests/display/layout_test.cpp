#include "display/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "display/table_grid.h"

namespace corvanel {
namespace {

/// Measures like a font with characters of even width.
class EvenFont : public TextMeasure {
 public:
  Extent Line(const std::string& text, const ElementStyle& style, double points) const override {
    const double pixels = points * 96 / 72;
    return {static_cast<double>(text.size()) * pixels * (style.Bold ? 0.6 : 0.55), pixels * 1.15};
  }
  Extent Digits(const std::string& text, const ElementStyle& /*style*/,
                double points) const override {
    const double pixels = points * 96 / 72;
    return {static_cast<double>(text.size()) * pixels * 0.52, pixels * 0.73};
  }
};

Session LongTexts() {
  Session session;
  session.settings.nRounds = 22;
  session.settings.MinPerRound = 120;
  session.settings.Skip = "21";
  session.settings.Arrow = "21";
  session.settings.Header =
      "The Grand Autumn Congress of All the Clubs of the County, Second Session";
  session.options.TimeAs24hour = false;
  return session;
}

struct Named {
  const char* name;
  const TextPlace& text;
  std::string widest;
  Element element;
};

void Check(double width, double height, bool moving, const Session& session) {
  const EvenFont font;
  LayoutInput input{width, height, moving, WidestTextsOf(session, 0), session.options.Show};
  const Layout layout = LayOut(input, session.elements, font);
  const std::string where =
      std::to_string(width) + "x" + std::to_string(height) + (moving ? " moving" : "");
  const Named rows[] = {
      {"header", layout.header, input.texts.header, Element::Title},
      {"now", layout.now, input.texts.now, Element::CurrentTime},
      {"caption", layout.caption, moving ? input.texts.message : input.texts.caption,
       Element::RoundInformation},
      {"finish", layout.finish, input.texts.finish, Element::FinishTime},
  };
  std::vector<Place> places = {layout.panel};
  for (const Named& row : rows) {
    if (row.widest.empty()) continue;
    EXPECT_GE(row.text.points, kLeastTextPoints) << row.name << ' ' << where;
    const ElementStyle& style = session.elements[static_cast<size_t>(row.element)];
    const auto lines =
        BreakLines(row.widest, row.text.lines, row.text.place.width, style, row.text.points, font);
    EXPECT_LE(lines.size(), static_cast<size_t>(row.text.lines)) << row.name << ' ' << where;
    double tall = 0;
    for (const std::string& line : lines) {
      const Extent extent = font.Line(line, style, row.text.points);
      EXPECT_LE(extent.width, row.text.place.width + 0.01) << row.name << ' ' << where;
      tall += extent.height;
      if (width >= 480) {
        EXPECT_EQ(line.find("…"), std::string::npos) << row.name << ' ' << where;
      }
    }
    EXPECT_LE(tall, row.text.place.height + 0.01) << row.name << ' ' << where;
    places.push_back(row.text.place);
  }
  for (size_t i = 0; i < places.size(); ++i) {
    EXPECT_GE(places[i].y, kLeastWindow / 16) << where;
    EXPECT_LE(places[i].Bottom(), height - kLeastWindow / 16) << i << ' ' << where;
    for (size_t j = 0; j < i; ++j) {
      EXPECT_TRUE(places[i].y >= places[j].Bottom() - 0.01 ||
                  places[j].y >= places[i].Bottom() - 0.01)
          << i << " over " << j << ' ' << where;
    }
  }
  const Extent digits =
      font.Digits(input.texts.countdown, session.elements[3], layout.countdown.points);
  EXPECT_GE(layout.countdown.points, kLeastCountdownPoints) << where;
  EXPECT_LE(digits.width, layout.countdown.place.width) << where;
  EXPECT_LE(digits.height, layout.countdown.place.height + 0.01) << where;
  EXPECT_GE(layout.countdown.place.y, layout.tag.place.Bottom() - 0.01) << where;
  EXPECT_LE(layout.countdown.place.Bottom(), layout.panel.Bottom()) << where;
  if (width >= 640 && width < 2.5 * height) {
    EXPECT_TRUE(digits.width >= 0.45 * width || digits.height >= 0.45 * height) << where;
  }
}

TEST(LayoutTest, EverythingFitsAtEverySize) {
  const std::pair<double, double> sizes[] = {{kLeastWindow, kLeastWindow},
                                             {kLeastWindow, 2000},
                                             {2000, kLeastWindow},
                                             {320, 280},
                                             {640, 480},
                                             {800, 600},
                                             {1024, 768},
                                             {1280, 720},
                                             {1366, 768},
                                             {1920, 1080},
                                             {2560, 1080},
                                             {3840, 2160},
                                             {1080, 1920},
                                             {768, 1024},
                                             {1920, 400}};
  Session plain;
  plain.settings.Header = "Friday Pairs";
  for (const auto& [width, height] : sizes) {
    for (const bool moving : {false, true}) {
      Check(width, height, moving, plain);
      Check(width, height, moving, LongTexts());
    }
  }
}

TEST(LayoutTest, HiddenRowsLeaveTheirRoomToTheCountdown) {
  Session session;
  session.settings.Header = "Friday Pairs";
  const EvenFont font;
  LayoutInput input{1024, 768, false, WidestTextsOf(session, 0), {1, 1, 1, 1, 1}};
  const Layout all = LayOut(input, session.elements, font);
  input.show = {0, 0, 0, 1, 0};
  const Layout bare = LayOut(input, session.elements, font);
  EXPECT_EQ(bare.header.points, 0);
  EXPECT_EQ(bare.caption.points, 0);
  EXPECT_GT(bare.panel.height, all.panel.height);
}

TEST(LayoutTest, TheWidestTextsComeFromTheSession) {
  Session session;
  session.settings.nRounds = 5;
  session.settings.MinPerRound = 7.5F;
  session.settings.TimeForBreak = 20;
  session.settings.Arrow = "2";
  WidestTexts texts = WidestTextsOf(session, 0);
  EXPECT_EQ(texts.countdown, "88:00");
  EXPECT_EQ(texts.message, "ARROW - MOVE FOR ROUND 3");
  EXPECT_EQ(texts.caption, "Time remaining for Round 22 of 28");
  EXPECT_EQ(WidestTextsOf(session, 100 * 60).countdown, "888:00");
  session.settings.optBreak = false;
  session.settings.MinPerRound = 9.5F;
  EXPECT_EQ(WidestTextsOf(session, 0).countdown, "8:00");
  EXPECT_EQ(WidestTextsOf(session, 9 * 60 + 59.7).countdown, "88:00");  // shown as 10:00
  session.options.TimeChange = 60;
  EXPECT_EQ(WidestTextsOf(session, 0).countdown, "88:00");
}

TEST(LayoutTest, LinesBreakEvenlyAndShortTextsKeepToOne) {
  const EvenFont font;
  const ElementStyle style;
  const auto broken = BreakLines("SKIP/ARROW - MOVE FOR THE FINAL ROUND", 2, 300, style, 20, font);
  ASSERT_EQ(broken.size(), 2U);
  EXPECT_EQ(broken[1], "FOR THE FINAL ROUND");
  EXPECT_EQ(BreakLines("MOVE", 2, 300, style, 20, font).size(), 1U);
  const auto elided = BreakLines("ÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄ", 1, 200, style, 20, font);
  ASSERT_EQ(elided.size(), 1U);
  EXPECT_TRUE(elided[0].ends_with("Ä…"));
}

TEST(LayoutTest, EveryStateHasAWord) {
  EXPECT_EQ(StateWord(Phase::Round, false, Element::TimeRemaining), "");
  EXPECT_EQ(StateWord(Phase::Round, false, Element::EarlyWarning), "EARLY WARNING");
  EXPECT_EQ(StateWord(Phase::Round, false, Element::LastWarning), "LAST WARNING");
  EXPECT_EQ(StateWord(Phase::Move, false, Element::TimeUp), "TIME UP");
  EXPECT_EQ(StateWord(Phase::Break, false, Element::LastWarning), "BREAK");
  EXPECT_EQ(StateWord(Phase::Move, true, Element::TimeUp), "PAUSED");
}

TEST(TableGridTest, CellsStandApartWithinTheirRoom) {
  const std::vector<std::vector<size_t>> rows = {
      {1}, {8}, {256}, {7, 6}, std::vector<size_t>(8, 25), std::vector<size_t>(78, 3), {1, 40}};
  for (const auto& tables : rows) {
    for (const auto& [width, height] : {std::pair(1000.0, 120.0), std::pair(400.0, 300.0)}) {
      const TableGrid grid = LayOutTables(tables, width, height);
      std::vector<Place> all = grid.letters;
      ASSERT_EQ(grid.cells.size(), tables.size());
      for (size_t s = 0; s < tables.size(); ++s) {
        EXPECT_EQ(grid.cells[s].size(), tables[s]);
        all.insert(all.end(), grid.cells[s].begin(), grid.cells[s].end());
      }
      for (size_t i = 0; i < all.size(); ++i) {
        EXPECT_TRUE(all[i].x > -0.01 && all[i].y > -0.01 && all[i].Right() < width + 0.01 &&
                    all[i].Bottom() < height + 0.01);
        for (size_t j = 0; j < i; ++j) {
          const bool apart = all[i].x > all[j].Right() - 0.01 || all[j].x > all[i].Right() - 0.01 ||
                             all[i].y > all[j].Bottom() - 0.01 || all[j].y > all[i].Bottom() - 0.01;
          ASSERT_TRUE(apart) << tables.size() << " sections, cells " << i << " and " << j;
        }
      }
    }
  }
  EXPECT_TRUE(LayOutTables({}, 100, 100).cells.empty());
}

}  // namespace
}  // namespace corvanel
