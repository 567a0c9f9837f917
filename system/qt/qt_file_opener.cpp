#include "system/qt/qt_file_opener.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace corvanel {

void QtFileOpener::Open(const std::string& file) {
  const QString name = QString::fromStdString(file);
  if (QFile::exists(name)) QDesktopServices::openUrl(QUrl::fromLocalFile(name));
}

}  // namespace corvanel
