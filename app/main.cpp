#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QMessageBox>
#include <cstdio>

#include "app/desktop.h"
#include "system/folders.h"
#include "system/qt/single_instance.h"

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

}  // namespace

int main(int argc, char** argv) {
  Application app(argc, argv);
  QApplication::setApplicationName("Corvanel");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setDesktopFileName("corvanel");
  QIcon icon;
  for (const char* size : {"32", "64", "256"})
    icon.addFile(QString(":/icons/corvanel-%1.png").arg(size));
  QApplication::setWindowIcon(icon);

  QCommandLineParser parser;
  parser.setApplicationDescription(
      QApplication::tr("The round clock for a duplicate bridge session."));
  parser.addHelpOption();
  const QCommandLineOption store("store", QApplication::tr("Use this settings file."), "file");
  parser.addOption(store);
  if (!parser.parse(QApplication::arguments()) || !parser.positionalArguments().isEmpty()) {
    const QString problem = parser.errorText().isEmpty() ? QApplication::tr("Unexpected argument.")
                                                         : parser.errorText();
    std::fprintf(stderr, "corvanel: %s\n", qPrintable(problem));
    return 2;
  }
  if (parser.isSet("help")) parser.showHelp();

  std::filesystem::path file = corvanel::DefaultStoreFile();
  if (parser.isSet(store)) file = parser.value(store).toStdString();
  // A link is followed once, so that store, lock and records lie beside one and the same file.
  std::error_code error;
  if (const auto real = std::filesystem::weakly_canonical(file, error); !error) file = real;
  corvanel::Desktop desktop(file);
  app.errors = &desktop.Errors();
  QDir().mkpath(QFileInfo(QString::fromStdString(file.string())).path());
  corvanel::SingleInstance instance(QString::fromStdString(file.string()));
  switch (instance.Take()) {
    case corvanel::SingleInstance::Place::First:
      break;
    case corvanel::SingleInstance::Place::Second:
      return 0;
    case corvanel::SingleInstance::Place::OtherComputer:
      QMessageBox::warning(nullptr, "Corvanel",
                           QApplication::tr("These settings are in use by another Corvanel:\n%1")
                               .arg(QString::fromStdString(file.string())));
      return 2;
  }
  QObject::connect(&instance, &corvanel::SingleInstance::StartedAgain, &desktop,
                   &corvanel::Desktop::ComeToFront);
  desktop.StartUp();
  return QApplication::exec();
}
