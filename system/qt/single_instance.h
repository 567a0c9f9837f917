#pragma once

#include <QLocalServer>
#include <QString>

#include "system/store_lock.h"

namespace corvanel {

/// Lets one program run on a store: whoever comes second brings the first one to the front.
class SingleInstance : public QObject {
  Q_OBJECT

 public:
  explicit SingleInstance(const QString& store);

  enum class Place { First, Second, OtherComputer };
  /// First also where the folder of the store cannot be written: then nobody writes it.
  Place Take();

 signals:
  /// The program was started again.
  void StartedAgain();

 private:
  StoreLock lock_;
  QString name_;
  QLocalServer server_;
};

}  // namespace corvanel
