#include "display/window/display_options_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "display/window/frm_help.h"
#include "display/window/room_miniature.h"
#include "settings/settings_table.h"
#include "tests/support/dialogs.h"
#include "tests/support/fakes.h"
#include "tests/support/letters.h"

namespace corvanel {
namespace {

/// The real dialog with choosers that answer by themselves.
class AnsweringFont : public DisplayOptionsDialog {
 public:
  using DisplayOptionsDialog::DisplayOptionsDialog;
  std::optional<QColor> colour;
  std::optional<QFont> font;

 protected:
  std::optional<QFont> ChooseFont(const QFont& /*present*/) override { return font; }
  std::optional<QColor> ChooseColour(const QColor& /*present*/) override { return colour; }
};

class FrmFontTest : public testing::Test {
 protected:
  int rearranged = 0;
  FakeStore store;
  Session session;
  FakeErrors errors;
  SettingsTable table{store, session, errors};
  DisplayOptions logic{{.session = session,
                        .save = [this](const auto& keys) { table.SaveDisplayOptions(keys); },
                        .rearrange = [this] { ++rearranged; },
                        .rewriteTimes = [] {},
                        .errors = errors}};
};

TEST_F(FrmFontTest, ShowsAndChangesTheChosenElement) {
  AnsweringFont dialog(logic, nullptr);
  dialog.show();
  EXPECT_EQ(Find<QCheckBox>(dialog, "chkShow_4")->text(), "Show tit&le");
  EXPECT_EQ(Find<QCheckBox>(dialog, "chkShow_7")->text(), "Show Bridgemate t&able nos");
  EXPECT_EQ(Find<QCheckBox>(dialog, "chkBMcontrol")->text(),
            "Show Bridgemate information onl&y on control screen");
  auto* list = Find<QListWidget>(dialog, "lstFonts");
  EXPECT_EQ(list->count(), 10);
  list->setCurrentRow(4);
  EXPECT_EQ(list->item(4)->text(), "Warning period (LAST WARNING)");
  const auto* sample = Find<StyleSample>(dialog, "lblSample");
  EXPECT_EQ(sample->Text(), "12:34");
  EXPECT_EQ(sample->ShownFont().pointSizeF(), 48);
  list->setCurrentRow(2);  // a long one, which is shown smaller rather than cut off
  EXPECT_LE(QFontMetrics(sample->ShownFont()).horizontalAdvance(sample->Text()), sample->width());
  session.elements[8].Size = 300;
  list->setCurrentRow(8);
  EXPECT_LE(QFontMetrics(sample->ShownFont()).height(), sample->height());
  session.elements[8].Size = DefaultElementStyles()[8].Size;
  list->setCurrentRow(4);
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdColour"), Qt::LeftButton);  // cancelled
  EXPECT_EQ(session.elements, DefaultElementStyles());
  dialog.colour = QColor(0x11, 0x22, 0x33);
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdColour"), Qt::LeftButton);
  EXPECT_EQ(session.elements[4].Backcolour, (Colour{0x11, 0x22, 0x33}));
  EXPECT_EQ(Find<StyleSample>(dialog, "lblSample")->grab().toImage().pixelColor(3, 3),
            QColor(0x11, 0x22, 0x33));
  EXPECT_FALSE(Find<QLabel>(dialog, "lblContrast")->text().isEmpty());
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdForecolour"), Qt::LeftButton);
  EXPECT_EQ(session.elements[4].Forecolour, (Colour{0x11, 0x22, 0x33}));
  dialog.font = QFont("Liberation Serif", 33);
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdFont"), Qt::LeftButton);
  EXPECT_EQ(session.elements[4].Name, "Liberation Serif");
  EXPECT_EQ(session.elements[4].Size, 33);
  EXPECT_EQ(rearranged, 3);
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdRestore"), Qt::LeftButton);
  EXPECT_EQ(session.elements, DefaultElementStyles());
}

// The small room display takes the colours at once, and a click in it chooses.
TEST_F(FrmFontTest, AClickInTheSmallRoomDisplayChoosesWhatStandsThere) {
  AnsweringFont dialog(logic, nullptr);
  dialog.show();
  auto* list = Find<QListWidget>(dialog, "lstFonts");
  auto* small = Find<RoomMiniature>(dialog, "roomMiniature");
  const auto click = [&](double x, double y) {
    QTest::mouseClick(
        small, Qt::LeftButton, Qt::NoModifier,
        QPoint(static_cast<int>(x * small->width()), static_cast<int>(y * small->height())));
    return static_cast<Element>(list->currentRow());
  };
  list->setCurrentRow(static_cast<int>(Element::EarlyWarning));
  EXPECT_EQ(click(0.5, 0.4), Element::EarlyWarning) << "the countdown as it is shown";
  EXPECT_EQ(click(0.004, 0.5), Element::ScreenBackground);
  EXPECT_EQ(click(0.5, 0.4), Element::TimeRemaining);
  list->setCurrentRow(static_cast<int>(Element::ScreenBackground));
  dialog.colour = QColor(0x22, 0x44, 0x22);
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdColour"), Qt::LeftButton);
  EXPECT_EQ(small->grab().toImage().pixelColor(0, 0), QColor(0x22, 0x44, 0x22));
}

TEST_F(FrmFontTest, EveryControlHasALetterOfItsOwn) {
  AnsweringFont dialog(logic, nullptr);
  ExpectLetters(dialog);
  ExpectLetters(FrmHelp(nullptr));
}

TEST_F(FrmFontTest, SwitchesTimesAndStepsAreTakenAndEscTakesThemBack) {
  AnsweringFont dialog(logic, nullptr);
  dialog.show();
  QTest::mouseClick(Find<QCheckBox>(dialog, "chkShow_1"), Qt::LeftButton, Qt::NoModifier, {8, 8});
  QTest::mouseClick(Find<QRadioButton>(dialog, "optTime_1"), Qt::LeftButton, Qt::NoModifier,
                    {8, 8});
  EXPECT_FALSE(session.options.Show[1]);
  EXPECT_FALSE(session.options.TimeAs24hour);
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_TRUE(session.options.Show[1]);
  EXPECT_TRUE(session.options.TimeAs24hour);
  EXPECT_EQ(store.flushes, 0);
}

TEST_F(FrmFontTest, AStepThatIsNotOfferedIsNotSelected) {
  session.options.TimeChange = 7;
  AnsweringFont dialog(logic, nullptr);
  EXPECT_EQ(Find<QComboBox>(dialog, "cmbSecs")->count(), 7);
  EXPECT_EQ(Find<QComboBox>(dialog, "cmbSecs")->currentIndex(), -1);
  dialog.show();
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdClose"), Qt::LeftButton);
  EXPECT_EQ(store.GetSetting("Timer", "TimeChange"), "7");
  EXPECT_EQ(store.flushes, 1);
}

}  // namespace
}  // namespace corvanel
