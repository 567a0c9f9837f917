#include "control/window/entry_box.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include "session/session.h"

namespace corvanel {

EntryBox::EntryBox(QWidget* parent) : QLineEdit(parent) {
  connect(this, &QLineEdit::textEdited, this, &EntryBox::FilterInsertion);
}

void EntryBox::SetBox(Box box) {
  box_ = box;
  if (box == Box::Header) setMaxLength(kLongestTitle);
}

void EntryBox::Show(const QString& text) {
  before_ = text;
  if (text != this->text()) setText(text);
}

void EntryBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    event->accept();
    // With Ctrl it is the window's shortcut for Start.
    if (event->modifiers() & Qt::ControlModifier) {
      event->ignore();
    } else {
      emit EnterPressed();
    }
    return;
  }
  const QString typed = event->text();
  const bool command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  if (!command && !typed.isEmpty() && typed[0].isPrint()) {
    const auto characters = typed.toUcs4();
    if (!Takes(box_, characters[0])) {
      QApplication::beep();
      event->accept();
      return;
    }
  }
  QLineEdit::keyPressEvent(event);
}

/// What was pasted, dropped or composed has not passed the keys' filter yet.
void EntryBox::FilterInsertion(const QString& text) {
  const FilteredEdit edit = FilterEdit(box_, before_.toStdString(), text.toStdString());
  if (edit.refused) QApplication::beep();
  if (edit.text != text.toStdString()) {
    setText(QString::fromStdString(edit.text));
    setCursorPosition(
        static_cast<int>(QString::fromStdString(edit.text.substr(0, edit.cursor)).size()));
  }
  const bool changed = before_ != this->text();
  before_ = this->text();
  if (changed) emit Edited(this->text());
}

void EntryBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (event->reason() == Qt::MouseFocusReason) {
    // After the press, which would place the cursor and take the selection away again.
    QTimer::singleShot(0, this, &QLineEdit::selectAll);
  } else {
    selectAll();
  }
}

void EntryBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  switch (event->reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
      break;  // the director will be back in this box
    default:
      emit Leaving();
  }
}

}  // namespace corvanel
