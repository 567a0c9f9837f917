#include <gtest/gtest.h>

#include <QTest>

#include "system/qt/qt_sound_player.h"

namespace corvanel {
namespace {

TEST(QtSoundPlayerTest, TellsWhatWasNotHeard) {
  QtSoundPlayer player(CORVANEL_SOUND_FOLDER);
  QStringList told;
  QObject::connect(&player, &QtSoundPlayer::NotPlayed, &player,
                   [&](const QString& file, const QString& why) { told << file + ": " + why; });
  player.Play("\\no such.wav");
  ASSERT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }, 10000));
  EXPECT_TRUE(told[0].contains("no such.wav")) << told[0].toStdString();
}

}  // namespace
}  // namespace corvanel
