#include "display/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "display/state_words.h"
#include "display/table_grid.h"

namespace corvanel {
namespace {

/// Measures like a font with characters of even width.
class EvenFont : public TextMeasure {
 public:
  Extent Line(const std::string& text, const ElementStyle& style, double points) const override {
    const double pixels = points * 96 / 72;
    const double wide = style.Name == "Wide" ? 1.3 : 1;
    return {static_cast<double>(text.size()) * pixels * wide * (style.Bold ? 0.6 : 0.55),
            pixels * 1.15};
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

/// What one picture of the display has to hold.
struct Scene {
  const char* name;
  bool moving = false;
  const char* large = "";
  double tables = 0;  // share of the height
};

constexpr Scene kScenes[] = {
    {"round"},
    {"move", true},
    {"paused", false, "PAUSED"},
    {"paused move", true, "PAUSED"},
    {"waiting", false, "WAITING FOR TABLES A11 B12 C13 D14", 0.2},
    {"tables", false, "", 0.105},
    {"move with tables", true, "", 0.21},
};

/// Small windows may be too small for everything: there it is enough that nothing is lost.
bool Roomy(double width, double height) {
  return width >= 800 && height >= 600 && width < 2 * height;
}

LayoutInput InputOf(const Scene& scene, double width, double height, const Session& session) {
  LayoutInput input{width,
                    height,
                    scene.moving,
                    scene.tables * height,
                    WidestTextsOf(session, 0),
                    session.options.Show};
  input.texts.large = scene.large;
  if (scene.moving) input.texts.caption = "SKIP/ARROW - MOVE FOR THE FINAL ROUND";
  if (scene.tables > 0) input.texts.unit = "Last board not started at tables 28 28 28";
  return input;
}

void Check(double width, double height, const Scene& scene, const Session& session) {
  const EvenFont font;
  const LayoutInput input = InputOf(scene, width, height, session);
  const Layout layout = LayOut(input, session.elements, font);
  const std::string where = std::to_string(width) + "x" + std::to_string(height) + ' ' + scene.name;
  const Named rows[] = {
      {"header", layout.header, input.texts.header, Element::Title},
      {"now", layout.now, input.texts.now, Element::CurrentTime},
      {"large", layout.large, input.texts.large, Element::RoundInformation},
      {"caption", layout.caption, input.texts.caption, Element::RoundInformation},
      {"finish", layout.finish, input.texts.finish, Element::FinishTime},
      {"unit", layout.unit, input.texts.unit, Element::UnitInfo},
  };
  std::vector<Place> places = {layout.panel};
  if (scene.tables > 0) places.push_back(layout.tables);
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
      tall += row.text.capitals ? 1.45 * font.Digits("0", style, row.text.points).height
                                : extent.height;
      if (width >= 480) {
        EXPECT_EQ(line.find("…"), std::string::npos) << row.name << ' ' << where;
      }
    }
    EXPECT_LE(tall, row.text.place.height + 0.01) << row.name << ' ' << where;
    places.push_back(row.text.place);
  }
  const bool roomy = Roomy(width, height);
  for (size_t i = 0; i < places.size() && (roomy || scene.tables == 0); ++i) {
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
  EXPECT_LE(digits.width, layout.countdown.place.width) << where;
  EXPECT_LE(layout.countdown.place.Bottom(), layout.panel.Bottom() + 0.01) << where;
  if (!roomy) return;
  EXPECT_GE(layout.countdown.points, kLeastCountdownPoints) << where;
  EXPECT_LE(digits.height, layout.countdown.place.height + 0.01) << where;
  // The word stands above the digits, or beside the widest with which it is shown.
  const double tagged =
      font.Digits(input.texts.tagged, session.elements[5], layout.countdown.points).width;
  const double top = layout.panel.y + (layout.panel.height - digits.height) / 2;
  EXPECT_TRUE(top >= layout.tag.place.Bottom() - 0.01 ||
              layout.tag.place.Right() <= (width - tagged) / 2)
      << where;
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
    for (const Scene& scene : kScenes) {
      Check(width, height, scene, plain);
      Check(width, height, scene, LongTexts());
    }
  }
}

// Shares of the height: what weak eyes read from the back wall.
TEST(LayoutTest, TheCountdownStaysKingAndTheMessageIsTheNews) {
  struct Row {
    Scene scene;
    double digits;
    double caption;  // of the message, each line
    double large;
  };
  const Row rows[] = {
      {{"round"}, 0.4, 0, 0},
      {{"one row of tables", false, "", 0.105}, 0.37, 0, 0},
      {{"many tables", false, "", 0.21}, 0.3, 0, 0},
      {{"paused", false, "PAUSED"}, 0.37, 0, 0.07},
      {{"paused with tables", false, "PAUSED", 0.21}, 0.3, 0, 0.07},
      {{"move", true}, 0.21, 0.095, 0},
  };
  Session session;
  session.settings.Header = "Friday Pairs";
  session.settings.MinPerRound = 20;
  const EvenFont font;
  const auto capitals = [&](const TextPlace& text) {
    return font.Digits("0", {}, text.points).height / 1080;
  };
  for (const Row& row : rows) {
    const Layout layout = LayOut(InputOf(row.scene, 1920, 1080, session), session.elements, font);
    EXPECT_GE(capitals(layout.countdown), row.digits) << row.scene.name;
    EXPECT_GE(capitals(layout.caption), row.caption) << row.scene.name;
    EXPECT_GE(capitals(layout.large), row.large) << row.scene.name;
    EXPECT_GE(capitals(layout.tag), 0.04) << row.scene.name;
  }
}

TEST(LayoutTest, TheWordFitsItsCornerInEveryFont) {
  Session session;
  session.settings.MinPerRound = 20;
  session.elements[static_cast<size_t>(Element::EarlyWarning)].Name = "Wide";
  const EvenFont font;
  const Scene scene{"tables", false, "", 0.2};
  const Layout layout = LayOut(InputOf(scene, 1920, 1080, session), session.elements, font);
  ASSERT_EQ(layout.tag.lines, 2);
  ElementStyle wide = session.elements[static_cast<size_t>(Element::EarlyWarning)];
  wide.Bold = true;
  EXPECT_LE(font.Line("WARNING", wide, layout.tag.points).width, layout.tag.place.width);
}

TEST(LayoutTest, HiddenRowsLeaveTheirRoomToTheCountdown) {
  Session session;
  session.settings.Header = "Friday Pairs";
  const EvenFont font;
  LayoutInput input{1920, 800, false, 0, WidestTextsOf(session, 0), {1, 1, 1, 1, 1}};
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
  session.settings.MinWarning1 = 9;
  WidestTexts texts = WidestTextsOf(session, 0);
  EXPECT_EQ(texts.countdown, "88:00");
  EXPECT_EQ(texts.tagged, "8:00");
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
  const auto broken = BreakLines("SKIP/ARROW - MOVE FOR THE FINAL ROUND", 2, 400, style, 20, font);
  ASSERT_EQ(broken.size(), 2U);
  EXPECT_EQ(broken[0], "SKIP/ARROW -");
  EXPECT_EQ(BreakLines("MOVE FOR ROUND 5", 2, 200, style, 20, font)[1], "ROUND 5");
  EXPECT_EQ(BreakLines("MOVE", 2, 300, style, 20, font).size(), 1U);
  const auto facts = BreakLines("Finish at 22:31 · Break:20:53 End:21:08", 2, 400, style, 20, font);
  EXPECT_EQ(facts, (std::vector<std::string>{"Finish at 22:31", "Break:20:53 End:21:08"}));
  const auto elided = BreakLines("ÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄ", 1, 200, style, 20, font);
  ASSERT_EQ(elided.size(), 1U);
  EXPECT_TRUE(elided[0].ends_with("Ä…"));
}

TEST(StateWordsTest, EveryStateHasAWord) {
  struct Row {
    Phase phase;
    Element style;
    bool paused;
    const char* waiting;
    StateWords words;
  };
  constexpr Element kCalm = Element::TimeRemaining;
  const Row rows[] = {
      {Phase::Round, kCalm, false, "", {"", ""}},
      {Phase::Round, Element::EarlyWarning, false, "", {"EARLY WARNING", ""}},
      {Phase::Round, Element::LastWarning, true, "", {"LAST WARNING", "PAUSED"}},
      {Phase::Round, kCalm, true, "WAITING FOR TABLE 5", {"", "WAITING FOR TABLE 5"}},
      {Phase::Round, Element::TimeUp, false, "", {"TIME UP", ""}},
      {Phase::Move, Element::TimeUp, false, "", {"MOVE", ""}},
      {Phase::Move, Element::TimeUp, true, "", {"MOVE", "PAUSED"}},
      {Phase::Break, kCalm, false, "", {"", "BREAK UNTIL 21:08"}},
      {Phase::Break, Element::LastWarning, false, "", {"BREAK ENDS", "BREAK UNTIL 21:08"}},
      {Phase::Break, kCalm, true, "", {"", "PAUSED"}},
      {Phase::Ended, Element::TimeUp, false, "", {"", "END OF PLAY"}},
  };
  for (const Row& row : rows) {
    ClockFace face;
    face.phase = row.phase;
    face.countdownStyle = row.style;
    face.paused = row.paused;
    face.schedule.breakEnd = ClockTime::At(21, 8);
    EXPECT_EQ(StateWordsOf(face, row.waiting, TimeForm::Hours24), row.words)
        << row.words.tag << ' ' << row.words.large;
  }
}

/// Nothing overlaps, nothing reaches beyond the grid.
void ExpectApart(const TableGrid& grid, const std::vector<size_t>& tables, double width) {
  std::vector<Place> all = grid.letters;
  ASSERT_EQ(grid.cells.size(), tables.size());
  for (size_t s = 0; s < tables.size(); ++s) {
    EXPECT_EQ(grid.cells[s].size(), tables[s]);
    all.insert(all.end(), grid.cells[s].begin(), grid.cells[s].end());
  }
  for (size_t i = 0; i < all.size(); ++i) {
    EXPECT_TRUE(all[i].x > -0.01 && all[i].y > -0.01 && all[i].Right() < width + 0.01 &&
                all[i].Bottom() < grid.height + 0.01);
    for (size_t j = 0; j < i; ++j) {
      const bool apart = all[i].x > all[j].Right() - 0.01 || all[j].x > all[i].Right() - 0.01 ||
                         all[i].y > all[j].Bottom() - 0.01 || all[j].y > all[i].Bottom() - 0.01;
      ASSERT_TRUE(apart) << tables.size() << " sections, cells " << i << " and " << j;
    }
  }
}

TEST(TableGridTest, CellsStandApartWithinTheirRoom) {
  const std::vector<std::vector<size_t>> rows = {
      {1},    {8}, {40}, {256}, {7, 6}, std::vector<size_t>(8, 25), std::vector<size_t>(78, 3),
      {1, 40}};
  for (const auto& tables : rows) {
    for (const auto& [width, height] : {std::pair(1000.0, 700.0), std::pair(400.0, 1000.0)}) {
      ExpectApart(LayOutTables(tables, width, height), tables, width);
      EXPECT_LE(LayOutTables(tables, width, height).height, 0.22 * height);
      ExpectApart(LayOutLists(tables, width, height), tables, width);
    }
  }
  EXPECT_EQ(LayOutTables({}, 100, 100).height, 0);
  EXPECT_EQ(LayOutLists({}, 100, 100).height, 0);
}

TEST(TableGridTest, AboveFortyOnlyThoseThatPlayAreShown) {
  SectionCells first{"A", std::vector<TableCell>(20, {"1", TableState::Finished, "", ""})};
  SectionCells second{"B", std::vector<TableCell>(20, {"2", TableState::Finished, "", ""})};
  second.cells[7].state = TableState::Slow;
  EXPECT_EQ(ShownTables({first, second}).size(), 2U);
  second.cells.push_back({"21", TableState::NotPlaying, "NP", ""});
  const auto shown = ShownTables({first, second});
  ASSERT_EQ(shown.size(), 1U);
  ASSERT_EQ(shown[0].cells.size(), 1U);
  EXPECT_EQ(shown[0].cells[0].state, TableState::Slow);
}

}  // namespace
}  // namespace corvanel
