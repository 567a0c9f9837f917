#include "display/window/display_options_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "settings/settings_table.h"
#include "tests/support/dialogs.h"
#include "tests/support/fakes.h"

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
  EXPECT_EQ(Find<QCheckBox>(dialog, "chkShow_4")->text(), "Show title");
  EXPECT_EQ(Find<QCheckBox>(dialog, "chkShow_7")->text(), "Show Bridgemate table nos");
  EXPECT_EQ(Find<QCheckBox>(dialog, "chkBMcontrol")->text(),
            "Show Bridgemate information only on control screen");
  auto* list = Find<QListWidget>(dialog, "lstFonts");
  EXPECT_EQ(list->count(), 10);
  list->setCurrentRow(4);
  auto* sample = Find<QLabel>(dialog, "lblSample");
  EXPECT_EQ(sample->text(), "12:34");
  EXPECT_EQ(sample->font().pointSizeF(), 48);
  list->setCurrentRow(2);  // a long one, which is shown smaller rather than cut off
  EXPECT_LE(sample->fontMetrics().horizontalAdvance(sample->text()), sample->width());
  list->setCurrentRow(4);
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdColour"), Qt::LeftButton);  // cancelled
  EXPECT_EQ(session.elements, DefaultElementStyles());
  dialog.colour = QColor(0x11, 0x22, 0x33);
  QTest::mouseClick(Find<QPushButton>(dialog, "cmdColour"), Qt::LeftButton);
  EXPECT_EQ(session.elements[4].Backcolour, (Colour{0x11, 0x22, 0x33}));
  EXPECT_EQ(sample->palette().color(QPalette::Window), QColor(0x11, 0x22, 0x33));
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
