#include "platform/qt_prompts.h"

#include <QApplication>

namespace corvanel {

Answer QtPrompts::Ask(const std::string& text, QMessageBox::Icon icon,
                      QMessageBox::StandardButtons buttons, QMessageBox::StandardButton onEnter) {
  QMessageBox box(icon, QStringLiteral("Corvanel"), QString::fromStdString(text).remove('\r'),
                  buttons, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(onEnter);
  // In front of a full-screen display and of windows that are always on top.
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
  switch (box.exec()) {
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    case QMessageBox::Ok:
      return Answer::Ok;
    default:
      return Answer::Cancel;
  }
}

void QtPrompts::Message(const std::string& text) {
  Ask(text, QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok);
}

Answer QtPrompts::AskYesNo(const std::string& question) {
  return Ask(question, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
}

Answer QtPrompts::AskYesNoCancel(const std::string& question) {
  return Ask(question, QMessageBox::Question,
             QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel);
}

Answer QtPrompts::AskToContinue(const std::string& question) {
  ticks_.Hold();
  const Answer answer =
      Ask(question, QMessageBox::Critical, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
  ticks_.Release();
  return answer;
}

}  // namespace corvanel
