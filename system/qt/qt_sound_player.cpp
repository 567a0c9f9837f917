#include "system/qt/qt_sound_player.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <memory>

#include "system/folders.h"
#include "system/qt/sound_results.h"

namespace corvanel {
namespace {

constexpr int kMustBeginWithin = 3000;  // milliseconds

QString Why(int result) {
  switch (static_cast<SoundResult>(result)) {
    case SoundResult::NoFile:
      return QtSoundPlayer::tr("the file is not there");
    case SoundResult::NoDevice:
      return QtSoundPlayer::tr("no audio output is connected");
    case SoundResult::NoSound:
      return QtSoundPlayer::tr("the file is not a sound that can be played");
    default:
      return QtSoundPlayer::tr("the sound system does not work");
  }
}

/// One run of the program that plays a sound, from the sound thread. What is still running when
/// this goes is cut off, whatever state it is in.
class Playing : public QProcess {
 public:
  ~Playing() override {
    disconnect();
    kill();
    waitForFinished(100);
  }
  void Begin(const QStringList& arguments) {
    setStandardErrorFile(nullDevice());
    start(QCoreApplication::applicationDirPath() + "/corvanel-sound", arguments,
          QIODevice::ReadOnly);
  }
};

/// Lives on the sound thread. One sound at a time: a new one ends the one before it.
class Loudspeaker : public QObject {
 public:
  Loudspeaker(QtSoundPlayer& player, std::string programFolder)
      : player_(player), programFolder_(std::move(programFolder)), begin_(new QTimer(this)) {
    begin_->setSingleShot(true);
    begin_->setInterval(kMustBeginWithin);
    connect(begin_, &QTimer::timeout, this, [this] { Fail(-1); });
  }

  void Play(const QString& file) {
    // Looked for here: sounds may lie on a share, and that may take its time.
    file_ = QString::fromStdString(SoundFile(file.toStdString(), programFolder_));
    playing_ = std::make_unique<Playing>();
    connect(playing_.get(), &QProcess::readyRead, this, [this] {
      begin_->stop();
      emit player_.Played();
    });
    connect(playing_.get(), &QProcess::finished, this, [this](int result) {
      if (result != static_cast<int>(SoundResult::Played)) Fail(result);
    });
    connect(playing_.get(), &QProcess::errorOccurred, this, [this] { Fail(-1); });
    begin_->start();
    playing_->Begin({file_});
  }

  void LookForDevice() {
    looking_ = std::make_unique<Playing>();
    connect(looking_.get(), &QProcess::finished, this, [this](int result) {
      emit player_.DeviceSeen(result == static_cast<int>(SoundResult::Played));
    });
    looking_->Begin({});
  }

 private:
  void Fail(int result) {
    begin_->stop();
    emit player_.NotPlayed(file_, Why(result));
  }

  QtSoundPlayer& player_;
  std::string programFolder_;
  QTimer* begin_;
  QString file_;
  std::unique_ptr<Playing> playing_;
  std::unique_ptr<Playing> looking_;
};

}  // namespace

QtSoundPlayer::QtSoundPlayer(std::string programFolder)
    : programFolder_(std::move(programFolder)) {}

QtSoundPlayer::~QtSoundPlayer() {
  thread_.quit();
  thread_.wait();
}

bool QtSoundPlayer::IsThere(const std::string& file) const {
  return QFile::exists(QString::fromStdString(SoundFile(file, programFolder_)));
}

void QtSoundPlayer::EnsureThread() {
  if (thread_.isRunning()) return;
  auto* loudspeaker = new Loudspeaker(*this, programFolder_);
  loudspeaker->moveToThread(&thread_);
  connect(this, &QtSoundPlayer::Wanted, loudspeaker, &Loudspeaker::Play);
  connect(this, &QtSoundPlayer::DeviceWanted, loudspeaker, &Loudspeaker::LookForDevice);
  connect(&thread_, &QThread::finished, loudspeaker, &QObject::deleteLater);
  thread_.start();
}

void QtSoundPlayer::Play(const std::string& file) {
  EnsureThread();
  emit Wanted(QString::fromStdString(file));
}

void QtSoundPlayer::LookForDevice() {
  EnsureThread();
  emit DeviceWanted();
}

}  // namespace corvanel
