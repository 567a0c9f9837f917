#pragma once

#include <QCryptographicHash>
#include <QFile>
#include <memory>

#include "startup/update_check.h"

namespace corvanel {

/// The installer in a fresh folder of its own within the temporary folder, which only this user can
/// enter: nobody can put another file in its place between the check and the start.
class QtInstallerFile : public InstallerFile {
 public:
  QtInstallerFile() : hash_(QCryptographicHash::Sha256) {}
  bool Create() override;
  bool Write(const std::string& bytes) override;
  bool Close() override;
  std::string Sha256() const override { return hash_.result().toHex().toStdString(); }
  std::string Path() const { return file_.fileName().toStdString(); }
  void Remove() override;
  bool CanStart() const override;
  void Start() override;

 private:
  QFile file_;
  QCryptographicHash hash_;
};

}  // namespace corvanel
