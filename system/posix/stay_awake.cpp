#include "system/stay_awake.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <array>
#include <optional>
#include <utility>

namespace corvanel {
namespace {

/// A service that keeps the screen on; all of them are asked alike.
struct Service {
  const char* name;
  const char* path;
  const char* interface;
};

// In the order in which they are asked: most desktops have the first, XFCE has only the second.
constexpr std::array kServices = std::to_array<Service>({
    {"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver"},
    {"org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit",
     "org.freedesktop.PowerManagement.Inhibit"},
});

QDBusMessage Call(size_t service, const char* method, const QList<QVariant>& arguments) {
  const Service& asked = kServices[service];
  QDBusMessage call =
      QDBusMessage::createMethodCall(asked.name, asked.path, asked.interface, method);
  call.setArguments(arguments);
  return call;
}

}  // namespace

/// The wish, and who has granted it.
class StayAwake::Holder : public QObject {
 public:
  explicit Holder(StayAwake& told) : told_(told) {
    if (!bus_.isConnected()) return;
    for (const Service& service : kServices) services_.addWatchedService(service.name);
    services_.setConnection(bus_);
    connect(&services_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name) {
              // What it held went with it; another, or it again, may be there now.
              if (granted_ && name == kServices[granted_->service].name) granted_.reset();
              if (wanted_ && !granted_) Ask(0);
            });
  }

  void Want(bool wanted) {
    if (std::exchange(wanted_, wanted) == wanted) return;
    if (wanted) {
      Ask(0);
    } else {
      Release();
      emit told_.Unprotected(false);
    }
  }

  void Release() {
    wanted_ = false;
    if (!granted_) return;
    bus_.call(Call(granted_->service, "UnInhibit", {granted_->cookie}), QDBus::NoBlock);
    granted_.reset();
  }

 private:
  struct Granted {
    size_t service;
    unsigned cookie;
  };

  /// The service, or the next that answers. The desktop answers when it likes.
  void Ask(size_t service) {
    if (service == kServices.size() || !bus_.isConnected()) {
      emit told_.Unprotected(true);
      return;
    }
    auto* answer = new QDBusPendingCallWatcher(
        bus_.asyncCall(Call(service, "Inhibit", {"Corvanel", "A bridge session is running"})),
        this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, service] {
      const QDBusPendingReply<unsigned> reply = *answer;
      answer->deleteLater();
      if (!reply.isValid()) {
        if (wanted_ && !granted_) Ask(service + 1);
        return;
      }
      const bool second = granted_.has_value();
      const Granted granted{service, reply.value()};
      if (second || !wanted_) {
        bus_.call(Call(granted.service, "UnInhibit", {granted.cookie}), QDBus::NoBlock);
        return;
      }
      granted_ = granted;
      emit told_.Unprotected(false);
    });
  }

  StayAwake& told_;
  QDBusConnection bus_ = QDBusConnection::sessionBus();
  QDBusServiceWatcher services_;
  bool wanted_ = false;
  std::optional<Granted> granted_;
};

StayAwake::StayAwake() : holder_(std::make_unique<Holder>(*this)) {}

StayAwake::~StayAwake() {
  holder_->Release();
}

void StayAwake::ShowFace(const ClockFace& face) {
  holder_->Want(Runs(face.phase));
}

}  // namespace corvanel
