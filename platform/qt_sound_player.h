#pragma once

#include <QObject>
#include <QThread>
#include <string>

#include "session/sound_player.h"

namespace corvanel {

/// Plays on a thread of its own, so that neither opening a device nor reading a file ever holds
/// the clock up.
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
