#include "system/qt/single_instance.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

#include "system/path_text.h"

namespace corvanel {
namespace {

constexpr int kAnswersWithin = 1000;  // milliseconds
constexpr int kToldWithin = 200;      // milliseconds
constexpr qint64 kLongestMessage = 40000;
constexpr int kTurns = 100;
constexpr int kTurn = 100;  // milliseconds
// What one start says to another.
constexpr const char* kStart = "start";
constexpr const char* kEnd = "end";

QString NameOf(const QString& store) {
  const QByteArray path = QFileInfo(store).absoluteFilePath().toUtf8();
  // In the user's own folder: in one of all users somebody else might listen under this name.
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/corvanel-" +
         QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
}

}  // namespace

SingleInstance::SingleInstance(const QString& store)
    : lock_(PathOf(store.toStdString())), name_(NameOf(store)) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, [this] {
    QLocalSocket* second = server_.nextPendingConnection();
    second->waitForReadyRead(kToldWithin);
    const QStringList message = QString::fromUtf8(second->read(kLongestMessage)).split('\n');
    second->deleteLater();
    if (message[0] == kEnd) {
      emit EndWanted();
      return;
    }
    emit StartedAgain(message.value(1));
    if (!message.value(2).isEmpty()) emit FileWanted(message[2]);
  });
}

SingleInstance::Place SingleInstance::Take(const QString& token, const QString& file) {
  if (lock_.Take()) {
    QLocalServer::removeServer(name_);
    server_.listen(name_);
    return Place::First;
  }
  return Tell(QStringList{kStart, token, file}.join('\n')) ? Place::Second : Place::OtherComputer;
}

bool SingleInstance::Tell(const QString& message) const {
  QLocalSocket first;
  first.connectToServer(name_);
  if (!first.waitForConnected(kAnswersWithin)) return false;
  first.write(message.toUtf8() + '\n');
  return first.waitForBytesWritten(kAnswersWithin);
}

bool SingleInstance::End() {
  if (lock_.Take()) return true;
  Tell(kEnd);
  for (int turn = 0; turn < kTurns; ++turn) {
    if (lock_.Take()) return true;
    QThread::msleep(kTurn);
  }
  return false;
}

}  // namespace corvanel
