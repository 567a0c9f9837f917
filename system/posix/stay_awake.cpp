#include "system/stay_awake.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

namespace corvanel {
namespace {

constexpr int kPatience = 300;  // milliseconds; a desktop that does not answer is left alone

QDBusMessage Call(const QString& service, const char* method, const QList<QVariant>& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(service, "/org/freedesktop/ScreenSaver",
                                                     "org.freedesktop.ScreenSaver", method);
  call.setArguments(arguments);
  return call;
}

}  // namespace

StayAwake::StayAwake(QString service) : service_(std::move(service)) {}

StayAwake::~StayAwake() {
  Release();
}

void StayAwake::Hold() {
  if (held_) return;
  held_ = true;
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  const QDBusReply<unsigned> reply =
      bus.call(Call(service_, "Inhibit", {"Corvanel", "A bridge session is running"}), QDBus::Block,
               kPatience);
  if (reply.isValid()) cookie_ = reply.value();
}

void StayAwake::Release() {
  held_ = false;
  if (!cookie_) return;
  QDBusConnection::sessionBus().call(Call(service_, "UnInhibit", {*cookie_}), QDBus::NoBlock);
  cookie_.reset();
}

}  // namespace corvanel
