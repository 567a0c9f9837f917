#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <algorithm>
#include <map>

#include "display/window/countdown_panel.h"
#include "display/window/frm_display.h"
#include "display/window/frm_display2.h"
#include "display/window/text_row.h"
#include "session/contrast.h"
#include "system/key_places.h"
#include "tests/support/fake_display_host.h"
#include "tests/support/fakes.h"
#include "tools/pictures/states.h"
#include "widgets/qr_view.h"

namespace corvanel {
namespace {

// What a player with weak eyes reads at fifteen metres, as shares of the window's height.
constexpr double kDigits = 0.4;
constexpr double kDigitsOfMove = 0.2;
constexpr double kDigitsAboveRow = 0.37;  // of tables
constexpr double kDigitsAboveRows = 0.3;  // of tables
constexpr double kLargeWord = 0.07;
constexpr double kWord = 0.04;
constexpr double kEmptyBand = 0.06;  // with tables shown
constexpr double kEdge = 0.015;      // that stays free
// Contrast of small and large text.
constexpr double kSmallText = 4.5;
constexpr double kLargeText = 3;

/// The best contrast that anything within the place has to its most frequent colour.
double ContrastIn(const QImage& picture, const QRect& place) {
  std::map<QRgb, int> counts;
  for (int y = place.top(); y <= place.bottom(); ++y) {
    for (int x = place.left(); x <= place.right(); ++x) ++counts[picture.pixel(x, y)];
  }
  const auto most =
      std::max_element(counts.begin(), counts.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  const auto colour = [](QRgb pixel) {
    return Colour{static_cast<uint8_t>(qRed(pixel)), static_cast<uint8_t>(qGreen(pixel)),
                  static_cast<uint8_t>(qBlue(pixel))};
  };
  double best = 1;
  for (const auto& [pixel, count] : counts) {
    best = std::max(best, ContrastRatio(colour(pixel), colour(most->first)));
  }
  return best;
}

bool Uniform(const QImage& picture, const QRect& place) {
  const QRgb first = picture.pixel(place.topLeft());
  for (int y = place.top(); y <= place.bottom(); ++y) {
    for (int x = place.left(); x <= place.right(); ++x) {
      if (picture.pixel(x, y) != first) return false;
    }
  }
  return true;
}

/// The height of the highest band in which nothing stands.
int HighestEmptyBand(const QImage& picture) {
  int highest = 0;
  int band = 0;
  for (int y = 0; y < picture.height(); ++y) {
    // What is left and right of the middle is the panel's own field.
    const QRect middle(picture.width() / 6, y, picture.width() * 2 / 3, 1);
    band = Uniform(picture, middle) ? band + 1 : 0;
    highest = std::max(highest, band);
  }
  return highest;
}

class PictureTest : public testing::Test, public FakeDisplayHost {
 protected:
  PictureTest() : FakeDisplayHost(window, window) {
    ShapeForPictures(bench.session);
    window.ShowTimeOfDay("20:51");
    window.show();
  }
  QImage Take(const PictureState& state, const QSize& size) {
    window.resize(size);
    window.ShowFace(state.face);
    window.ShowTables(state.tables);
    window.Rearrange();
    return window.grab().toImage();
  }
  template <class T>
  const T& Find(const char* name) {
    return *window.findChild<T*>(name);
  }

  ClockBench bench;
  FakePrompts prompts;
  FakeErrors errors;
  DisplayCommands commands{{bench.clock, bench.session, prompts, errors, *this}};
  FrmDisplay window{bench.session, commands, LetterOfKey};
};

// Where players find the session on their phones, beside everything else.
TEST_F(PictureTest, TheCodeForPhonesStandsBesideThePictureAndIsLargeWhenThereIsTime) {
  window.ShowAddress("http://192.168.100.200:8080/");
  for (const QSize& size : {QSize(1024, 768), QSize(1920, 1080), QSize(1080, 1920)}) {
    for (const PictureState& state : PictureStates(bench.session.settings)) {
      SCOPED_TRACE(state.name);
      SCOPED_TRACE(size.width());
      Take(state, size);
      const auto& code = Find<QrView>("qrAddress");
      const auto& words = Find<QLabel>("lblAddress");
      const double shorter = std::min(size.width(), size.height());
      const bool leisure = state.face.phase == Phase::Break || state.face.phase == Phase::Ended;
      EXPECT_GE(code.width() / shorter, leisure ? 0.4 : 0.15);
      EXPECT_LE(words.sizeHint().width(), code.width() + 2);
      for (const QRect& edge : {code.geometry(), words.geometry()}) {
        EXPECT_TRUE(window.rect().contains(edge));
        EXPECT_FALSE(edge.intersects(Find<CountdownPanel>("lblMin").geometry()));
      }
      for (const TextRow* row : window.findChildren<TextRow*>()) {
        if (!row->isVisible() || row->Text().empty()) continue;
        EXPECT_TRUE(row->Fits()) << row->objectName().toStdString();
        EXPECT_FALSE(row->geometry().intersects(code.geometry()));
      }
    }
  }
  window.ShowAddress("");
  EXPECT_TRUE(Find<QrView>("qrAddress").isHidden());
}

// A measure of every state that there is, at the size of most rooms.
TEST_F(PictureTest, EveryStateIsReadFromTheBackWall) {
  constexpr QSize kRoom(1920, 1080);
  for (const PictureState& state : PictureStates(bench.session.settings)) {
    SCOPED_TRACE(state.name);
    const QImage picture = Take(state, kRoom);
    const double height = kRoom.height();
    const auto& panel = Find<CountdownPanel>("lblMin");
    const QSize tables = Find<QWidget>("lblTable").size();
    const bool shown = !state.tables.sections.empty();
    const bool news = state.face.phase == Phase::Move && !state.face.paused;
    double least = kDigits;
    if (shown) least = tables.height() < 0.12 * height ? kDigitsAboveRow : kDigitsAboveRows;
    EXPECT_GE(panel.DigitsSize().height() / height, news ? kDigitsOfMove : least);
    EXPECT_GE(panel.WordCapitals() / height, kWord);
    const auto& large = Find<TextRow>("lblState");
    EXPECT_TRUE(!large.isVisible() || large.Capitals() / height >= kLargeWord);
    // Nothing near an edge, nothing empty.
    const int edge = static_cast<int>(kEdge * height);
    for (const QRect& strip :
         {QRect(0, 0, kRoom.width(), edge), QRect(0, kRoom.height() - edge, kRoom.width(), edge),
          QRect(0, 0, edge, kRoom.height()),
          QRect(kRoom.width() - edge, 0, edge, kRoom.height())}) {
      EXPECT_TRUE(Uniform(picture, strip));
    }
    EXPECT_TRUE(!shown || HighestEmptyBand(picture) / height <= kEmptyBand)
        << HighestEmptyBand(picture) / height;
    // Every text stands out and is whole.
    EXPECT_GE(ContrastIn(picture, panel.geometry()), kLargeText);
    for (const TextRow* row : window.findChildren<TextRow*>()) {
      if (!row->isVisible() || row->Text().empty()) continue;
      SCOPED_TRACE(row->objectName().toStdString());
      const QRect place(row->mapTo(&window, QPoint(0, 0)), row->size());
      EXPECT_GE(ContrastIn(picture, place), kSmallText);
      EXPECT_TRUE(row->Fits());
    }
  }
}

// The twin's own row, on a dark and on a light ground.
TEST_F(PictureTest, TheButtonsForTheRoomDisplayAreLegible) {
  FrmDisplay2 twin{bench.session, commands, LetterOfKey};
  twin.resize(1280, 720);
  twin.show();
  for (const Colour back : {Colour{6, 17, 42}, Colour{250, 250, 240}}) {
    bench.session.elements[static_cast<size_t>(Element::ScreenBackground)].Backcolour = back;
    twin.Rearrange();
    const QImage picture = twin.grab().toImage();
    for (const QLabel* label : twin.findChild<QFrame*>("fraMonitor")->findChildren<QLabel*>()) {
      const QRect place(label->mapTo(&twin, QPoint(0, 0)), label->size());
      EXPECT_GE(ContrastIn(picture, place), kSmallText);
    }
  }
}

}  // namespace
}  // namespace corvanel
