#pragma once

#include <QLineEdit>

#include "control/entry_rules.h"

namespace corvanel {

/// A text box that takes only its own characters, however they come in, and tells when its entry
/// is finished.
class EntryBox : public QLineEdit {
  Q_OBJECT

 public:
  explicit EntryBox(QWidget* parent = nullptr);
  /// Which box this is; to be set before it is used.
  void SetBox(Box box);
  Box WhichBox() const { return box_; }
  /// Shows a text of the program's own; no signal.
  void Show(const QString& text);

 signals:
  /// The text was edited, not yet finished.
  void Edited(const QString& text);
  void EnterPressed();
  /// The focus goes to another control of the window.
  void Leaving();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void FilterInsertion(const QString& text);

  Box box_ = Box::Header;
  QString before_;
};

}  // namespace corvanel
