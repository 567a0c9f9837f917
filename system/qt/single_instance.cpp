#include "system/qt/single_instance.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>

namespace corvanel {
namespace {

constexpr int kAnswersWithin = 1000;  // milliseconds
constexpr int kToldWithin = 200;      // milliseconds
constexpr qint64 kLongestToken = 1000;

QString NameOf(const QString& store) {
  const QByteArray path = QFileInfo(store).absoluteFilePath().toUtf8();
  // In the user's own folder: in one of all users somebody else might listen under this name.
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/corvanel-" +
         QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
}

}  // namespace

SingleInstance::SingleInstance(const QString& store)
    : lock_(store.toStdString()), name_(NameOf(store)) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, [this] {
    QLocalSocket* second = server_.nextPendingConnection();
    second->waitForReadyRead(kToldWithin);
    emit StartedAgain(QString::fromUtf8(second->read(kLongestToken)).trimmed());
    second->deleteLater();
  });
}

SingleInstance::Place SingleInstance::Take(const QString& token) {
  if (lock_.Take()) {
    QLocalServer::removeServer(name_);
    server_.listen(name_);
    return Place::First;
  }
  QLocalSocket first;
  first.connectToServer(name_);
  if (!first.waitForConnected(kAnswersWithin)) return Place::OtherComputer;
  first.write(token.toUtf8() + '\n');
  first.waitForBytesWritten(kAnswersWithin);
  return Place::Second;
}

}  // namespace corvanel
