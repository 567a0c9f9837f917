#include "tools/pictures/demonstration.h"

#include <QApplication>
#include <QDir>
#include <QTimer>
#include <cstdio>

namespace corvanel {
namespace {

constexpr int kSettle = 350;  // milliseconds from an event to its picture

}  // namespace

Demonstration::Demonstration(Desktop& desktop, const QString& folder)
    : desktop_(desktop), folder_(folder) {
  QDir().mkpath(folder_);
  Shape();
  desktop_.TheBroadcast().Add(*this);
  desktop_.MainWindow().show();
  QTimer::singleShot(kSettle, this, [this] {
    Picture(desktop_.MainWindow(), "control window");
    desktop_.Control().cmdStart_Click();
  });
}

void Demonstration::Shape() {
  SessionSettings& s = desktop_.TheSession().settings;
  s.nRounds = 3;
  s.MinPerRound = 0.15F;
  s.MinBetweenRounds = 0.1F;
  s.MinWarning = 0.05F;
  s.MinWarning1 = 0.1F;
  s.Skip = "1";
  s.Arrow = "1";
  s.optBreak = true;
  s.BreakAfterRound = 2;
  s.TimeForBreak = 0.1F;
  s.MoveAfterBreak = true;
  s.Header = "Friday Pairs";
  desktop_.Control().Display();
}

void Demonstration::Happened(EventKind kind, const std::string& text) {
  const std::string event(kEventNames[static_cast<size_t>(kind)]);
  std::printf("%s\t%s\n", event.c_str(), text.c_str());
  std::fflush(stdout);
  if (kind == EventKind::Sound) return;
  QTimer::singleShot(kSettle, this, [this, name = QString::fromStdString(event), kind] {
    Picture(desktop_.Display(), name);
    if (kind == EventKind::End) desktop_.EndProgram();
  });
}

void Demonstration::Picture(QWidget& window, const QString& name) {
  const QString file = QStringLiteral("%1/%2 %3.png")
                           .arg(folder_)
                           .arg(++pictures_, 2, 10, QLatin1Char('0'))
                           .arg(name);
  if (!window.grab().save(file))
    std::fprintf(stderr, "corvanel: cannot write %s\n", qPrintable(file));
}

}  // namespace corvanel
