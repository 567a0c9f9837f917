#pragma once

#include <QObject>
#include <QThread>
#include <map>
#include <string>

#include "session/sound_player.h"

namespace corvanel {

/// Plays every sound with a process of its own, ordered from a thread of its own: nothing that a
/// sound server, a disk or a damaged file does ever holds the clock up. The process of the next
/// sound stands ready meanwhile, and tells what it would play on.
class QtSoundPlayer : public QObject, public SoundPlayer {
  Q_OBJECT

 public:
  explicit QtSoundPlayer(const std::string& programFolder);
  ~QtSoundPlayer() override;
  void Play(const std::string& file) override { emit Wanted(QString::fromStdString(file), false); }
  void Test(const std::string& file) override { emit Wanted(QString::fromStdString(file), true); }
  void StopTest() override { emit StopWanted(); }
  SoundFitness Fitness(const std::string& file) const override;
  /// Why no sound would be heard now, for people; empty when sounds would be.
  std::string OutputProblem() const { return outputProblem_; }

 signals:
  /// A sound has begun, and can be heard.
  void Heard(const std::string& file);
  /// A cue of the session could not be heard; `why` is for people.
  void NotHeard(const std::string& file, const std::string& why);
  /// A sound that is tested has begun, or is over.
  void Tested(const SoundTest& test);
  /// What is known of the output, or of a file's fitness, is another than it was.
  void Changed();

  // To the sound thread.
  void Wanted(const QString& file, bool test);
  void StopWanted();
  void CheckWanted(const QString& file) const;

 private:
  friend class Loudspeaker;
  void TakeOutput(const std::string& problem);
  void TakeFitness(const std::string& file, SoundFitness fitness);

  QThread thread_;
  std::string outputProblem_;
  std::map<std::string, SoundFitness> fitness_;
};

}  // namespace corvanel
