#pragma once

#include <QString>
#include <optional>

namespace corvanel {

/// Keeps the computer from sleeping and the screen from going blank while a session runs, by the
/// desktop's inhibit interface. On a desktop without one nothing happens.
class StayAwake {
 public:
  /// `service`: the bus name asked; tests name one of their own.
  explicit StayAwake(QString service = "org.freedesktop.ScreenSaver");
  ~StayAwake();
  StayAwake(const StayAwake&) = delete;
  StayAwake& operator=(const StayAwake&) = delete;

  /// Holding twice is holding once.
  void Hold();
  void Release();

 private:
  QString service_;
  bool held_ = false;
  std::optional<unsigned> cookie_;
};

}  // namespace corvanel
