// corvanel-sound [FILE]: plays a wave file on the default device and ends with it; without a file
// only looks for a device. A program of its own, so that nothing that a sound server does (hang,
// crash, go, come back) can reach the clock: each sound connects anew. Prints "playing" as soon as
// the sound begins.

#include <QAudioDevice>
#include <QCoreApplication>
#include <QFile>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>
#include <cstdio>

#include "system/qt/sound_results.h"

namespace {

constexpr int kDrain = 500;  // milliseconds

/// Whether there is anything to be heard from. The sound server's stand-in for a device that is not
/// there swallows everything.
bool DeviceThere() {
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  return !device.isNull() && device.id() != "auto_null";
}

}  // namespace

int main(int argc, char** argv) {
  using corvanel::SoundResult;
  const auto end = [](SoundResult result) { return static_cast<int>(result); };
  QCoreApplication app(argc, argv);
  const QString file = QCoreApplication::arguments().value(1);
  if (!file.isEmpty() && !QFile::exists(file)) return end(SoundResult::NoFile);
  if (!DeviceThere()) return end(SoundResult::NoDevice);
  if (file.isEmpty()) return end(SoundResult::Played);
  QSoundEffect effect;
  QObject::connect(&effect, &QSoundEffect::statusChanged, &app, [&] {
    if (effect.status() == QSoundEffect::Error) QCoreApplication::exit(end(SoundResult::NoSound));
  });
  QObject::connect(&effect, &QSoundEffect::playingChanged, &app, [&] {
    if (effect.isPlaying()) {
      std::puts("playing");
      std::fflush(stdout);
    } else {
      // The server still holds the last of it.
      QTimer::singleShot(kDrain, &app, [&] { QCoreApplication::exit(end(SoundResult::Played)); });
    }
  });
  effect.setSource(QUrl::fromLocalFile(file));
  effect.play();
  return QCoreApplication::exec();
}
