#pragma once

#include <QObject>
#include <QThread>
#include <string>

#include "session/sound_player.h"

namespace corvanel {

/// Plays every sound with a process of its own, started from a thread of its own: nothing that a
/// sound server does ever holds the clock up, and one that went and came back is heard again.
class QtSoundPlayer : public QObject, public SoundPlayer {
  Q_OBJECT

 public:
  explicit QtSoundPlayer(std::string programFolder);
  ~QtSoundPlayer() override;
  void Play(const std::string& file) override;
  bool IsThere(const std::string& file) const override;
  /// Looks for a sound device; the answer comes with DeviceSeen.
  void LookForDevice();

 signals:
  /// A sound could not be heard; `why` is for people.
  void NotPlayed(const QString& file, const QString& why);
  /// A sound began.
  void Played();
  void DeviceSeen(bool there);

  // To the sound thread.
  void Wanted(const QString& file);
  void DeviceWanted();

 private:
  void EnsureThread();

  std::string programFolder_;
  QThread thread_;
};

}  // namespace corvanel
