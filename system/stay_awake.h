#pragma once

#include <QObject>
#include <memory>

#include "session/session_listener.h"

namespace corvanel {

/// Keeps the computer from sleeping and the screen from going blank while a session is under way,
/// also when the desktop's service for it comes only later, or goes and comes back.
class StayAwake : public QObject, public SessionListener {
  Q_OBJECT

 public:
  StayAwake();
  ~StayAwake() override;
  void ShowFace(const ClockFace& face) override;

 signals:
  /// Whether the computer should be kept awake and nothing does it; told whenever that may have
  /// changed.
  void Unprotected(bool unprotected);

 private:
  class Holder;
  std::unique_ptr<Holder> holder_;
};

}  // namespace corvanel
