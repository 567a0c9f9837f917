// A hundred evenings made up by chance, seen on both displays.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QApplication>

#include "basics/times.h"
#include "display/window/countdown_panel.h"
#include "display/window/frm_display.h"
#include "display/window/frm_display2.h"
#include "display/window/text_row.h"
#include "system/key_places.h"
#include "tests/support/chance_evening.h"
#include "tests/support/fake_display_host.h"

namespace corvanel {
namespace {

class EveningInWindows : public ChanceEvening {
 public:
  explicit EveningInWindows(unsigned seed) : ChanceEvening(seed) {
    for (DisplayWindow* display : displays_) {
      Bench().clocks.broadcast.Add(*display);
      display->resize(seed % 2 == 0 ? QSize(1920, 1080) : QSize(1024, 768));
      display->show();
    }
  }
  int Looks() const { return looks_; }

 private:
  static std::string Shown(const DisplayWindow& display) {
    std::string all;
    for (const TextRow* row : display.findChildren<TextRow*>()) {
      if (row->isVisible()) all += row->Text() + '\n';
    }
    return all;
  }

  void Look() override {
    ++looks_;
    const double left = Bench().clocks.clock.Now().secondsLeft;
    for (const DisplayWindow* display : displays_) {
      const auto* digits = display->findChild<CountdownPanel*>("lblMin");
      EXPECT_EQ(digits->Countdown(), MinutesAndSeconds(left));
      const std::string shown = Shown(*display);
      ExpectTrue(shown);
    }
    // Laying out and painting are the window system's doing; now and then is enough.
    if (looks_ % 50 == 0) {
      QApplication::processEvents();
      for (const TextRow* row : room_.findChildren<TextRow*>()) {
        EXPECT_TRUE(!row->isVisible() || row->Fits()) << row->Text();
      }
    }
  }

  /// What both displays say must be what truly is.
  void ExpectTrue(const std::string& shown) {
    const ClockState& state = State();
    const auto says = [&](const std::string& text) {
      return shown.find(text) != std::string::npos;
    };
    const bool round = state.phase == Phase::Round;
    EXPECT_EQ(says("WAITING FOR"), state.autoPaused) << shown;
    EXPECT_EQ(says("MOVE FOR"), state.phase == Phase::Move) << shown;
    EXPECT_EQ(says("END OF PLAY"), state.phase == Phase::Ended) << shown;
    if (round && !state.paused) {
      EXPECT_TRUE(says(fmt::format("Round {}", state.round)) || says("Final Round")) << shown;
    }
    if (!round || state.round != RoundInFile() || IsSwapped()) return;
    for (const std::string& table : Playing()) {
      const size_t line = shown.find("Table");
      if (line != std::string::npos && says("still playing")) {
        EXPECT_NE(shown.find(' ' + table, line), std::string::npos)
            << shown << " without " << table;
      }
    }
  }

  FakePrompts prompts_;
  FakeDisplayHost host_{room_, twin_};
  DisplayCommands commands_{
      {Bench().clocks.clock, Bench().session, prompts_, Bench().clocks.errors, host_}};
  FrmDisplay room_{Bench().session, commands_, LetterOfKey};
  FrmDisplay2 twin_{Bench().session, commands_, LetterOfKey};
  std::array<DisplayWindow*, 2> displays_ = {&room_, &twin_};
  int looks_ = 0;
};

/// A quarter of them, so that they can run side by side.
class EveningsInWindowsTest : public testing::TestWithParam<unsigned> {};

TEST_P(EveningsInWindowsTest, BothDisplaysShowWhatIsTrueAtEveryPoll) {
  int looks = 0;
  for (unsigned seed = GetParam(); seed < GetParam() + 25 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    EveningInWindows evening(seed);
    evening.Play();
    looks += evening.Looks();
  }
  EXPECT_GT(looks, 5000);
}
INSTANTIATE_TEST_SUITE_P(Quarter, EveningsInWindowsTest, testing::Values(101, 126, 151, 176));

}  // namespace
}  // namespace corvanel
