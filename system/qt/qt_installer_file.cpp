#include "system/qt/qt_installer_file.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace corvanel {

bool QtInstallerFile::Create() {
  QTemporaryDir folder(QDir::temp().filePath("corvanel-update-XXXXXX"));
  if (!folder.isValid()) return false;
  folder.setAutoRemove(false);
  file_.setFileName(folder.filePath("CorvanelSetup.exe"));
  hash_.reset();
  return file_.open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

bool QtInstallerFile::Write(const std::string& bytes) {
  const QByteArray chunk = QByteArray::fromStdString(bytes);
  hash_.addData(chunk);
  return file_.write(chunk) == chunk.size();
}

bool QtInstallerFile::Close() {
  const bool written = file_.flush();
  file_.close();
  return written && file_.error() == QFileDevice::NoError;
}

void QtInstallerFile::Remove() {
  if (file_.fileName().isEmpty()) return;
  file_.close();
  file_.remove();
  QDir().rmdir(QFileInfo(file_).path());
}

bool QtInstallerFile::CanStart() const {
#ifdef Q_OS_WIN
  return true;
#else
  return false;
#endif
}

void QtInstallerFile::Start() {
  QProcess::startDetached(file_.fileName(), {});
}

}  // namespace corvanel
