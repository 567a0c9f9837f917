#include "system/stay_awake.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace corvanel {
namespace {

QDBusMessage Call(const QString& service, const char* method, const QList<QVariant>& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(service, "/org/freedesktop/ScreenSaver",
                                                     "org.freedesktop.ScreenSaver", method);
  call.setArguments(arguments);
  return call;
}

}  // namespace

StayAwake::StayAwake(QString service)
    : service_(service.isEmpty() ? "org.freedesktop.ScreenSaver" : std::move(service)) {}

StayAwake::~StayAwake() {
  Release();
}

void StayAwake::ShowFace(const ClockFace& face) {
  if (Runs(face.phase)) {
    Hold();
  } else {
    Release();
  }
}

/// The desktop answers when it likes.
void StayAwake::Hold() {
  if (held_) return;
  held_ = true;
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  auto* answer = new QDBusPendingCallWatcher(
      bus.asyncCall(Call(service_, "Inhibit", {"Corvanel", "A bridge session is running"})), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    const QDBusPendingReply<unsigned> reply = *answer;
    answer->deleteLater();
    if (!reply.isValid()) return;
    cookie_ = reply.value();
    if (!held_) Release();
  });
}

void StayAwake::Release() {
  held_ = false;
  if (!cookie_) return;
  QDBusConnection::sessionBus().call(Call(service_, "UnInhibit", {*cookie_}), QDBus::NoBlock);
  cookie_.reset();
}

}  // namespace corvanel
