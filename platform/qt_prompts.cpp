#include "platform/qt_prompts.h"

#include <QApplication>

namespace corvanel {

Answer QtPrompts::Ask(const std::string& text, QMessageBox::Icon icon,
                      QMessageBox::StandardButtons buttons) {
  QMessageBox box(icon, QStringLiteral("Corvanel"), QString::fromStdString(text).remove('\r'),
                  buttons, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  // An Enter that was not meant for the question must not throw anything away.
  if (buttons & QMessageBox::No) box.setDefaultButton(QMessageBox::No);
  if (buttons & QMessageBox::Cancel) box.setDefaultButton(QMessageBox::Cancel);
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
  Ask(text, QMessageBox::Information, QMessageBox::Ok);
}

Answer QtPrompts::AskYesNo(const std::string& question) {
  return Ask(question, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No);
}

Answer QtPrompts::AskYesNoCancel(const std::string& question) {
  return Ask(question, QMessageBox::Question,
             QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
}

Answer QtPrompts::AskToContinue(const std::string& question) {
  ticks_.Hold();
  const Answer answer = Ask(question, QMessageBox::Critical, QMessageBox::Yes | QMessageBox::No);
  ticks_.Release();
  return answer;
}

}  // namespace corvanel
