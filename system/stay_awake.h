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
  /// `service`: who is asked; empty: the desktop. Tests name one of their own.
  explicit StayAwake(QString service = {});
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
