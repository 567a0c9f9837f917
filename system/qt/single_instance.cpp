#include "system/qt/single_instance.h"

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
    : lock_(store.toStdString()), name_(NameOf(store)) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, [this] {
    delete server_.nextPendingConnection();
    emit StartedAgain();
  });
}

SingleInstance::Place SingleInstance::Take() {
  if (lock_.Take()) {
    QLocalServer::removeServer(name_);
    server_.listen(name_);
    return Place::First;
  }
  QLocalSocket first;
  first.connectToServer(name_);
  return first.waitForConnected(kAnswersWithin) ? Place::Second : Place::OtherComputer;
}

}  // namespace corvanel
