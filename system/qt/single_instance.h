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
  /// What this start hands to the first program: its token, see `StartToken`, and a scoring file
  /// that is to be opened (empty: none).
  Place Take(const QString& token, const QString& file);
  /// Has the program that runs on this store end, as before a newer one is put in its place. False
  /// when it has not ended within ten seconds; true also when there was none.
  bool End();

 signals:
  /// The program was started again, with this token.
  void StartedAgain(const QString& token);
  /// And with this scoring file.
  void FileWanted(const QString& file);
  /// Somebody wants this program to end without a question.
  void EndWanted();

 private:
  bool Tell(const QString& message) const;

  StoreLock lock_;
  QString name_;
  QLocalServer server_;
};

}  // namespace corvanel
