#include "platform/qt_sound_player.h"

#include <QFile>
#include <QSoundEffect>
#include <QUrl>
#include <memory>

#include "platform/folders.h"

namespace corvanel {
namespace {

/// Lives on the sound thread. One effect at a time: a new one ends the one before it.
class Loudspeaker : public QObject {
 public:
  void Play(const QString& file) {
    effect_.reset();
    if (!QFile::exists(file)) return;
    effect_ = std::make_unique<QSoundEffect>();
    effect_->setSource(QUrl::fromLocalFile(file));
    effect_->play();
  }

 private:
  std::unique_ptr<QSoundEffect> effect_;
};

}  // namespace

QtSoundPlayer::QtSoundPlayer(std::string programFolder) : programFolder_(std::move(programFolder)) {
  auto* loudspeaker = new Loudspeaker;
  loudspeaker->moveToThread(&thread_);
  connect(this, &QtSoundPlayer::Wanted, loudspeaker, &Loudspeaker::Play);
  connect(&thread_, &QThread::finished, loudspeaker, &QObject::deleteLater);
}

QtSoundPlayer::~QtSoundPlayer() {
  thread_.quit();
  thread_.wait();
}

bool QtSoundPlayer::IsThere(const std::string& file) const {
  return QFile::exists(QString::fromStdString(SoundFile(file, programFolder_)));
}

void QtSoundPlayer::Play(const std::string& file) {
  if (!thread_.isRunning()) thread_.start();
  emit Wanted(QString::fromStdString(SoundFile(file, programFolder_)));
}

}  // namespace corvanel
