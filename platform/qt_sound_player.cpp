#include "platform/qt_sound_player.h"

#include <QAudioDevice>
#include <QFile>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>
#include <memory>

#include "platform/folders.h"

namespace corvanel {
namespace {

constexpr int kMustPlayWithin = 2000;  // milliseconds

/// Lives on the sound thread. One effect at a time: a new one ends the one before it. Each opens
/// the device that is the default one just then.
class Loudspeaker : public QObject {
 public:
  explicit Loudspeaker(QtSoundPlayer& player) : player_(player), timer_(new QTimer(this)) {
    timer_->setSingleShot(true);
    timer_->setInterval(kMustPlayWithin);
    connect(timer_, &QTimer::timeout, this,
            [this] { Fail(QtSoundPlayer::tr("the sound device does not answer")); });
  }

  void Play(const QString& file) {
    effect_.reset();
    file_ = file;
    if (!QFile::exists(file)) {
      Fail(QtSoundPlayer::tr("the file is not there"));
      return;
    }
    if (QMediaDevices::defaultAudioOutput().isNull()) {
      Fail(QtSoundPlayer::tr("this computer has no loudspeaker now"));
      return;
    }
    effect_ = std::make_unique<QSoundEffect>();
    connect(effect_.get(), &QSoundEffect::statusChanged, this, [this] {
      if (effect_->status() == QSoundEffect::Error) {
        Fail(QtSoundPlayer::tr("the file is not a sound that can be played"));
      }
    });
    connect(effect_.get(), &QSoundEffect::playingChanged, this, [this] {
      if (!effect_->isPlaying()) return;
      timer_->stop();
      emit player_.Played();
    });
    timer_->start();
    effect_->setSource(QUrl::fromLocalFile(file));
    effect_->play();
  }

  void LookForDevice() { emit player_.DeviceSeen(!QMediaDevices::defaultAudioOutput().isNull()); }

 private:
  void Fail(const QString& why) {
    timer_->stop();
    emit player_.NotPlayed(file_, why);
  }

  QtSoundPlayer& player_;
  QTimer* timer_;
  QString file_;
  std::unique_ptr<QSoundEffect> effect_;
};

}  // namespace

QtSoundPlayer::QtSoundPlayer(std::string programFolder) : programFolder_(std::move(programFolder)) {
  auto* loudspeaker = new Loudspeaker(*this);
  loudspeaker->moveToThread(&thread_);
  connect(this, &QtSoundPlayer::Wanted, loudspeaker, &Loudspeaker::Play);
  connect(this, &QtSoundPlayer::DeviceWanted, loudspeaker, &Loudspeaker::LookForDevice);
  connect(&thread_, &QThread::finished, loudspeaker, &QObject::deleteLater);
}

QtSoundPlayer::~QtSoundPlayer() {
  thread_.quit();
  thread_.wait();
}

bool QtSoundPlayer::IsThere(const std::string& file) const {
  return QFile::exists(QString::fromStdString(SoundFile(file, programFolder_)));
}

void QtSoundPlayer::EnsureThread() {
  if (!thread_.isRunning()) thread_.start();
}

void QtSoundPlayer::Play(const std::string& file) {
  EnsureThread();
  emit Wanted(QString::fromStdString(SoundFile(file, programFolder_)));
}

void QtSoundPlayer::LookForDevice() {
  EnsureThread();
  emit DeviceWanted();
}

}  // namespace corvanel
