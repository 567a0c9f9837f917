#pragma once

#include <QObject>
#include <QString>

#include "app/desktop.h"

namespace corvanel {

/// Plays a session of three short rounds in the real windows, prints what happens and saves a
/// picture of the room display at each phase.
class Demonstration : public QObject, public SessionListener {
  Q_OBJECT

 public:
  /// Starts playing at once; ends the program when the session is over.
  Demonstration(Desktop& desktop, const QString& folder);

  void Happened(EventKind kind, const std::string& text) override;

 private:
  void Shape();
  void Picture(QWidget& window, const QString& name);

  Desktop& desktop_;
  QString folder_;
  int pictures_ = 0;
};

}  // namespace corvanel
