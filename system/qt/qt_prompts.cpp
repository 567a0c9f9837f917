#include "system/qt/qt_prompts.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>

namespace corvanel {

namespace {

constexpr int kLongText = 1500;  // characters
constexpr int kManyLines = 20;
constexpr QSize kScrollSize(520, 280);  // pixels

/// The window that the director works with, also while none has the keys yet.
QWidget* DirectorsWindow() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto shown = std::find_if(windows.begin(), windows.end(),
                                  [](const QWidget* window) { return window->isVisible(); });
  return shown == windows.end() ? nullptr : *shown;
}

/// The sign of a kind of box: plain, and of one size whatever the desktop has.
QPixmap SignOf(QMessageBox::Icon kind, double ratio) {
  constexpr int kSize = 40;  // pixels
  const bool trouble = kind == QMessageBox::Critical || kind == QMessageBox::Warning;
  QPixmap sign(QSize(kSize, kSize) * ratio);
  sign.setDevicePixelRatio(ratio);
  sign.fill(Qt::transparent);
  QPainter painter(&sign);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(trouble ? QColor(0xC4, 0x2B, 0x1C)
                           : QApplication::palette().color(QPalette::Highlight));
  painter.drawEllipse(QRect(0, 0, kSize, kSize));
  QFont font = QApplication::font();
  font.setPixelSize(kSize * 3 / 5);
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(Qt::white);
  const char* letter = kind == QMessageBox::Question ? "?" : trouble ? "!" : "i";
  painter.drawText(QRect(0, 0, kSize, kSize), Qt::AlignCenter, letter);
  return sign;
}

/// A message box as all of them are.
class Box : public QMessageBox {
 public:
  Box(const std::string& text, QMessageBox::Icon icon, StandardButtons buttons)
      : QMessageBox(icon, QStringLiteral("Corvanel"), QString::fromStdString(text).remove('\r'),
                    buttons, DirectorsWindow()) {
    setIconPixmap(SignOf(icon, devicePixelRatioF()));
    setTextFormat(Qt::PlainText);
    if (QMessageBox::text().size() > kLongText || QMessageBox::text().count('\n') > kManyLines) {
      ScrollText();
    }
    // In front of a full-screen display and of windows that are always on top.
    setWindowFlag(Qt::WindowStaysOnTopHint);
  }

 private:
  /// All but the last paragraph, which asks, goes into a box that scrolls, above the buttons.
  void ScrollText() {
    const QString all = QMessageBox::text();
    const auto last = all.lastIndexOf("\n\n");
    auto* scroll = new QPlainTextEdit(last < 0 ? all : all.left(last), this);
    scroll->setReadOnly(true);
    scroll->setMinimumSize(kScrollSize);
    setText(last < 0 ? QString() : all.mid(last + 2));
    auto* grid = qobject_cast<QGridLayout*>(layout());
    auto* buttons = findChild<QDialogButtonBox*>();
    const int rows = grid->rowCount();
    grid->addWidget(scroll, rows, 0, 1, grid->columnCount());
    grid->addWidget(buttons, rows + 1, 0, 1, grid->columnCount());
  }
};

}  // namespace

Answer QtPrompts::Ask(const std::string& text, QMessageBox::Icon icon,
                      QMessageBox::StandardButtons buttons, QMessageBox::StandardButton onEnter) {
  Box box(text, icon, buttons);
  box.setDefaultButton(onEnter);
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

Answer QtPrompts::OfferYesNo(const std::string& question) {
  return Ask(question, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
}

Answer QtPrompts::AskYesNoCancel(const std::string& question) {
  return Ask(question, QMessageBox::Question,
             QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel);
}

std::optional<size_t> QtPrompts::Choose(const std::string& question,
                                        const std::vector<std::string>& answers) {
  Box box(question, QMessageBox::Question, QMessageBox::NoButton);
  std::vector<QAbstractButton*> buttons;
  buttons.reserve(answers.size());
  for (const std::string& answer : answers) {
    // One role for all, so that they stand in their order.
    buttons.push_back(box.addButton(QString::fromStdString(answer), QMessageBox::ActionRole));
  }
  box.setDefaultButton(qobject_cast<QPushButton*>(buttons.front()));
  // Without a button to reject with, Escape would do nothing.
  QPushButton* closed = box.addButton(QMessageBox::Cancel);
  closed->hide();
  box.exec();
  const auto clicked = std::find(buttons.begin(), buttons.end(), box.clickedButton());
  if (clicked == buttons.end()) return std::nullopt;
  return static_cast<size_t>(clicked - buttons.begin());
}

Answer QtPrompts::AskToContinue(const std::string& question) {
  return Ask(question, QMessageBox::Critical, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
}

namespace {

/// "Settings (*.txt)|*.txt" as Qt writes it: "Settings (*.txt)".
QString QtFilter(const std::string& filter) {
  const QString name = QString::fromStdString(filter).section('|', 0, 0);
  const QString pattern = QString::fromStdString(filter).section('|', 1, 1);
  return name.contains('(') ? name : QString("%1 (%2)").arg(name, pattern);
}

std::optional<std::string> Chosen(const QString& file) {
  return file.isEmpty() ? std::nullopt : std::optional(file.toStdString());
}

}  // namespace

std::optional<std::string> QtPrompts::ChooseFileToSave(const std::string& name,
                                                       const std::string& filter) {
  QFileDialog dialog(QApplication::activeWindow(), QObject::tr("Save as"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilter(QtFilter(filter));
  dialog.setDefaultSuffix(QFileInfo(QString::fromStdString(name)).suffix());
  dialog.selectFile(QDir::home().filePath(QString::fromStdString(name)));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return Chosen(dialog.selectedFiles().value(0));
}

std::optional<std::string> QtPrompts::ChooseFileToOpen(const std::string& title,
                                                       const std::string& folder,
                                                       const std::string& filter) {
  return Chosen(QFileDialog::getOpenFileName(QApplication::activeWindow(),
                                             QString::fromStdString(title),
                                             QString::fromStdString(folder), QtFilter(filter)));
}

}  // namespace corvanel
