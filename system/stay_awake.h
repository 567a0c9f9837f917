#pragma once

#include <QObject>
#include <QString>
#include <optional>

#include "session/session_listener.h"

namespace corvanel {

/// Keeps the computer from sleeping and the screen from going blank while a session is under way.
/// On a desktop that cannot be asked for it nothing happens.
class StayAwake : public QObject, public SessionListener {
  Q_OBJECT

 public:
  /// `service`: the name that the desktop is asked under; tests name one of their own.
  explicit StayAwake(QString service = "org.freedesktop.ScreenSaver");
  ~StayAwake() override;
  void ShowFace(const ClockFace& face) override;

 private:
  void Hold();
  void Release();

  QString service_;
  bool held_ = false;
  std::optional<unsigned> cookie_;
};

}  // namespace corvanel
