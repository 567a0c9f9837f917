#include "app/single_instance.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QLocalSocket>

namespace corvanel {
namespace {

constexpr int kAnswersWithin = 1000;  // milliseconds

QString NameOf(const QString& store) {
  const QByteArray path = QFileInfo(store).absoluteFilePath().toUtf8();
  return "corvanel-" + QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
}

}  // namespace

SingleInstance::SingleInstance(const QString& store)
    : lock_(store + ".lock"), name_(NameOf(store)) {
  // A lock is given up with the program that holds it, however that ended, and by no lapse of time.
  lock_.setStaleLockTime(0);
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, [this] {
    delete server_.nextPendingConnection();
    emit StartedAgain();
  });
}

SingleInstance::Place SingleInstance::Take() {
  if (lock_.tryLock(0)) {
    QLocalServer::removeServer(name_);
    server_.listen(name_);
    return Place::First;
  }
  if (lock_.error() != QLockFile::LockFailedError) return Place::First;
  QLocalSocket first;
  first.connectToServer(name_);
  return first.waitForConnected(kAnswersWithin) ? Place::Second : Place::OtherComputer;
}

}  // namespace corvanel
