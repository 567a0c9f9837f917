#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QMessageBox>
#include <QProxyStyle>
#include <cstdio>
#include <cstdlib>

#include "app/desktop.h"
#include "startup/version.h"
#include "system/desktop_session.h"
#include "system/durable_file.h"
#include "system/folders.h"
#include "system/path_text.h"
#include "system/qt/single_instance.h"
#include "widgets/colours.h"

namespace {

/// The last net under every event: what is thrown in the answer to one is reported and goes no
/// further.
class Application : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (...) {
      if (errors == nullptr) throw;
      const QString name = receiver->objectName();
      errors->ReportCurrent(
          name.isEmpty() ? receiver->metaObject()->className() : name.toStdString(), 0);
      return true;
    }
  }

  corvanel::ErrorTrap* errors = nullptr;
};

/// The desktop's own style, without the pictures on the buttons of questions, and with air
/// between the rows of lists and in buttons.
class CalmStyle : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, more);
  }
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override {
    constexpr int kAir = 6;  // pixels
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_ItemViewItem) return size + QSize(0, kAir);
    return type == CT_PushButton ? size + QSize(2 * kAir, 0) : size;
  }
};

/// The program's own options.
class CommandLine : public QCommandLineParser {
 public:
  CommandLine() {
    setApplicationDescription(
        QCoreApplication::translate("main", "The round clock for a duplicate bridge session."));
    // Else Qt's own "-reverse" would be taken for -r, -e, -v...
    setSingleDashWordOptionMode(ParseAsLongOptions);
    addHelpOption();
    addVersionOption();
    addOption(store);
    addOption(end);
    addPositionalArgument("file", QCoreApplication::translate("main", "Open this scoring file."),
                          "[file]");
  }
  const QCommandLineOption end{
      "end", QCoreApplication::translate("main",
                                         "Have the Corvanel that runs end; its session can "
                                         "be continued.")};
  const QCommandLineOption store{
      "store", QCoreApplication::translate("main", "Use this settings file."), "file"};
};

/// Answers what needs no display, and ends the program with it.
void AnswerWithoutDisplay(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  QCoreApplication::setApplicationName("corvanel");
  QCoreApplication::setApplicationVersion(QString::fromStdString(corvanel::ThisVersion().Text()));
  CommandLine line;
  // Qt's own options are not known yet: what is wrong is told later.
  line.parse(QCoreApplication::arguments());
  if (line.isSet("help") || line.isSet("help-all")) line.showHelp();
  if (line.isSet("version")) line.showVersion();
}

/// Qt would end the program with a core file and words for its own developers.
void TellWithoutDisplay(QtMsgType type, const QMessageLogContext& /*context*/,
                        const QString& /*text*/) {
  if (type != QtFatalMsg) return;
  std::fputs("corvanel: there is no screen to show the windows on\n", stderr);
  std::_Exit(2);
}

}  // namespace

int main(int argc, char** argv) {
  corvanel::KeepFilesPrivate();
  AnswerWithoutDisplay(argc, argv);
  corvanel::ChooseWindowSystem();
  const std::string token = corvanel::StartToken();
  const auto usual = qInstallMessageHandler(TellWithoutDisplay);
  Application app(argc, argv);
  qInstallMessageHandler(usual);
  QApplication::setStyle(new CalmStyle);
  QPalette colours = QApplication::palette();
  colours.setColor(QPalette::Active, QPalette::Highlight, corvanel::kAccent);
  colours.setColor(QPalette::Active, QPalette::HighlightedText, Qt::white);
  // On a dark ground the desktop's own colour of a link is told apart better.
  if (colours.color(QPalette::Window).lightness() > 128)
    colours.setColor(QPalette::Link, corvanel::kAccent);
  QApplication::setPalette(colours);
  QApplication::setApplicationName("Corvanel");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setDesktopFileName("corvanel");
  QIcon icon;
  for (const char* size : {"32", "64", "256"})
    icon.addFile(QString(":/icons/corvanel-%1.png").arg(size));
  QApplication::setWindowIcon(icon);

  CommandLine line;
  if (!line.parse(QApplication::arguments()) || line.positionalArguments().size() > 1) {
    const QString problem =
        line.errorText().isEmpty() ? QApplication::tr("Unexpected argument.") : line.errorText();
    std::fprintf(stderr, "corvanel: %s\n", qPrintable(problem));
    return 2;
  }

  std::filesystem::path file = corvanel::DefaultStoreFile();
  if (line.isSet(line.store)) file = corvanel::PathOf(line.value(line.store).toStdString());
  if (file.empty()) {
    std::fprintf(stderr, "corvanel: --store needs a file\n");
    return 2;
  }
  // A link is followed once, so that store, lock and records lie beside one and the same file.
  std::error_code error;
  if (const auto real = std::filesystem::weakly_canonical(file, error); !error) file = real;
  if (std::filesystem::exists(file, error) && !std::filesystem::is_regular_file(file, error)) {
    QMessageBox::warning(nullptr, "Corvanel",
                         QApplication::tr("The settings file %1 is not a file")
                             .arg(QString::fromStdString(corvanel::PathText(file))));
    return 2;
  }
  corvanel::Desktop desktop(file);
  app.errors = &desktop.Errors();
  QDir().mkpath(QFileInfo(QString::fromStdString(corvanel::PathText(file))).path());
  corvanel::SingleInstance instance(QString::fromStdString(corvanel::PathText(file)));
  if (line.isSet(line.end)) return instance.End() ? 0 : 1;
  QString scoring = line.positionalArguments().value(0);
  if (!scoring.isEmpty()) scoring = QFileInfo(scoring).absoluteFilePath();
  desktop.OpenScoringFile(scoring);
  switch (instance.Take(QString::fromStdString(token), scoring)) {
    case corvanel::SingleInstance::Place::First:
      break;
    case corvanel::SingleInstance::Place::Second:
      return 0;
    case corvanel::SingleInstance::Place::OtherComputer:
      QMessageBox::warning(nullptr, "Corvanel",
                           QApplication::tr("These settings are in use by another Corvanel:\n%1")
                               .arg(QString::fromStdString(corvanel::PathText(file))));
      return 2;
  }
  QObject::connect(&instance, &corvanel::SingleInstance::StartedAgain, &desktop,
                   &corvanel::Desktop::ComeToFront);
  QObject::connect(&instance, &corvanel::SingleInstance::FileWanted, &desktop,
                   &corvanel::Desktop::OpenScoringFile);
  QObject::connect(&instance, &corvanel::SingleInstance::EndWanted, &desktop,
                   &corvanel::Desktop::MakeWay);
  desktop.StartUp();
  return QApplication::exec();
}
