#include "system/qt/qt_sound_player.h"

#include <QCoreApplication>
#include <QProcess>
#include <QQueue>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <utility>

#include "system/sound_results.h"

namespace corvanel {
namespace {

// Milliseconds.
constexpr int kMustBeginWithin = 1000;  // a cue that comes later tells something wrong
constexpr int kMustEndWithin = 3000;    // beyond its own length
constexpr int kMustAnswerWithin = 3000;
constexpr int kTryAgain = 2000;
constexpr long long kLongest = 24LL * 3600 * 1000;

constexpr const char* kCueFirst = "a cue of the session came";
constexpr const char* kNoAnswer = "the sound system does not answer";

std::string Why(SoundResult result) {
  switch (result) {
    case SoundResult::Heard:
      return "";
    case SoundResult::NoFile:
      return "the file is not there";
    case SoundResult::NoSound:
      return "the file is not a sound that can be played";
    case SoundResult::NoOutput:
      return "no audio output is connected";
    case SoundResult::Muted:
      return "the sound is muted";
    case SoundResult::NoVolume:
      return "the volume is at 0";
    default:
      return kNoAnswer;
  }
}

}  // namespace

/// One run of the program that plays a sound. What still runs when this goes is cut off, whatever
/// state it is in.
class Run : public QProcess {
 public:
  Run() { setStandardErrorFile(nullDevice()); }
  ~Run() override {
    disconnect();
    kill();
    waitForFinished(100);
  }
  void Order(const char* what, const QString& file) {
    write(QByteArray(what) + ' ' + file.toUtf8() + '\0');
  }
};

/// Lives on the sound thread. One sound at a time: a new one ends the one before it.
class Loudspeaker : public QObject {
 public:
  Loudspeaker(QtSoundPlayer& player, QString programFolder)
      : player_(player),
        programFolder_(std::move(programFolder)),
        limit_(new QTimer(this)),
        checkLimit_(new QTimer(this)) {
    limit_->setSingleShot(true);
    checkLimit_->setSingleShot(true);
    connect(limit_, &QTimer::timeout, this, [this] {
      End(begun_ ? "it stopped before its end" : "it did not begin within a second");
    });
    connect(checkLimit_, &QTimer::timeout, this, [this] {
      const QString stuck = checks_.dequeue();
      ready_.reset();
      TellFitness(stuck, SoundResult::NoFile);
      Prepare();
    });
  }

  /// Has a process stand ready for the next sound.
  void Prepare() {
    if (ready_) return;
    ready_ = Start();
    for (const QString& file : checks_) ready_->Order("check", file);
    if (!checks_.isEmpty()) checkLimit_->start(kMustAnswerWithin);
  }

  void Play(const QString& file, bool test) {
    if (test && playing_ && !test_) {
      emit player_.Tested({file.toStdString(), "", kCueFirst, true, true});
      return;
    }
    const bool givesWay = test_ && !test;
    End(givesWay ? kCueFirst : "", givesWay);
    file_ = file;
    test_ = test;
    begun_ = false;
    trouble_.clear();
    // One that looks at a file may be kept waiting by a disk.
    playing_ = ready_ && checks_.isEmpty() ? std::move(ready_) : Start();
    playing_->Order("play", file);
    limit_->start(kMustBeginWithin);
  }

  void StopTest() {
    if (test_) End("");
  }

  void Check(const QString& file) {
    if (checks_.contains(file)) return;
    checks_.enqueue(file);
    if (!ready_) return;
    ready_->Order("check", file);
    if (!checkLimit_->isActive()) checkLimit_->start(kMustAnswerWithin);
  }

 private:
  std::unique_ptr<Run> Start() {
    auto run = std::make_unique<Run>();
    Run* one = run.get();
    connect(one, &QProcess::readyRead, this, [this, one] {
      while (one->canReadLine()) Take(*one, QString::fromUtf8(one->readLine()).trimmed());
    });
    connect(one, &QProcess::finished, this, [this, one] { Finished(one); });
    connect(one, &QProcess::errorOccurred, this, [this, one](QProcess::ProcessError error) {
      if (error == QProcess::FailedToStart) Finished(one);
    });
    one->start(QCoreApplication::applicationDirPath() + "/corvanel-sound", {programFolder_});
    return run;
  }

  void Take(const Run& from, const QString& line) {
    const auto result = static_cast<SoundResult>(line.section(' ', 1, 1).toInt());
    const QString rest = line.section(' ', 2);
    const QString word = line.section(' ', 0, 0);
    if (word == "output") {
      on_ = QString("%1, volume %2 %").arg(rest.section(' ', 1), rest.section(' ', 0, 0));
      TellOutput(Why(result));
    } else if (word == "file" && &from == ready_.get() && !checks_.isEmpty()) {
      TellFitness(checks_.dequeue(), result);
      checks_.isEmpty() ? checkLimit_->stop() : checkLimit_->start(kMustAnswerWithin);
    } else if (word == "begun" && &from == playing_.get()) {
      HasBegun(result, std::min(rest.toLongLong(), kLongest));
    }
  }

  void HasBegun(SoundResult result, long long length) {
    begun_ = true;
    trouble_ = Why(result);
    limit_->start(static_cast<int>(length) + kMustEndWithin);
    Tell(trouble_, false);
    Prepare();
  }

  void Finished(Run* run) {
    run->disconnect(this);
    const bool fine =
        run->exitStatus() == QProcess::NormalExit && run->error() != QProcess::FailedToStart;
    if (run == playing_.get()) {
      const auto result = fine ? static_cast<SoundResult>(run->exitCode()) : SoundResult::NoAnswer;
      // One too short for its beginning to be told.
      if (result == SoundResult::Heard && !begun_) HasBegun(result, 0);
      End(Why(result));
    } else if (run == ready_.get()) {
      ready_.release()->deleteLater();
      checkLimit_->stop();
      TellOutput(kNoAnswer);
      QTimer::singleShot(kTryAgain, this, &Loudspeaker::Prepare);
    }
  }

  /// The sound is over, whether by itself or not; nothing when there is none.
  void End(const std::string& why, bool gaveWay = false) {
    if (!playing_) return;
    limit_->stop();
    playing_.release()->deleteLater();
    Tell(test_ && why.empty() ? trouble_ : why, true, gaveWay);
    Prepare();
  }

  void Tell(const std::string& why, bool ended, bool gaveWay = false) {
    const std::string file = file_.toStdString();
    if (test_) emit player_.Tested({file, on_.toStdString(), why, ended, gaveWay});
    if (why.empty() && !ended) emit player_.Heard(file);
    if (!why.empty() && !test_) emit player_.NotHeard(file, why);
  }

  void TellOutput(const std::string& problem) {
    QMetaObject::invokeMethod(&player_, [this, problem] { player_.TakeOutput(problem); });
  }

  void TellFitness(const QString& file, SoundResult result) {
    const SoundFitness fitness = result == SoundResult::Heard    ? SoundFitness::Fine
                                 : result == SoundResult::NoFile ? SoundFitness::NotFound
                                                                 : SoundFitness::Unplayable;
    QMetaObject::invokeMethod(&player_, [this, file = file.toStdString(), fitness] {
      player_.TakeFitness(file, fitness);
    });
  }

  QtSoundPlayer& player_;
  const QString programFolder_;
  QTimer* limit_;       // of the sound that plays: until it begins, then until it ends
  QTimer* checkLimit_;  // of the file that is looked at
  QString on_;
  QQueue<QString> checks_;  // asked of the process that stands ready, in this order
  std::unique_ptr<Run> ready_;
  std::unique_ptr<Run> playing_;
  QString file_;
  bool test_ = false;
  bool begun_ = false;
  std::string trouble_;  // why it cannot be heard although it has begun
};

QtSoundPlayer::QtSoundPlayer(const std::string& programFolder) {
  auto* loudspeaker = new Loudspeaker(*this, QString::fromStdString(programFolder));
  loudspeaker->moveToThread(&thread_);
  connect(this, &QtSoundPlayer::Wanted, loudspeaker, &Loudspeaker::Play);
  connect(this, &QtSoundPlayer::StopWanted, loudspeaker, &Loudspeaker::StopTest);
  connect(this, &QtSoundPlayer::CheckWanted, loudspeaker, &Loudspeaker::Check);
  connect(&thread_, &QThread::started, loudspeaker, &Loudspeaker::Prepare);
  connect(&thread_, &QThread::finished, loudspeaker, &QObject::deleteLater);
  thread_.start();
}

QtSoundPlayer::~QtSoundPlayer() {
  thread_.quit();
  thread_.wait();
}

SoundFitness QtSoundPlayer::Fitness(const std::string& file) const {
  emit CheckWanted(QString::fromStdString(file));
  const auto known = fitness_.find(file);
  return known == fitness_.end() ? SoundFitness::Fine : known->second;
}

void QtSoundPlayer::TakeOutput(const std::string& problem) {
  if (std::exchange(outputProblem_, problem) != problem) emit Changed();
}

void QtSoundPlayer::TakeFitness(const std::string& file, SoundFitness fitness) {
  SoundFitness& known = fitness_.try_emplace(file, SoundFitness::Fine).first->second;
  if (std::exchange(known, fitness) != fitness) emit Changed();
}

}  // namespace corvanel
