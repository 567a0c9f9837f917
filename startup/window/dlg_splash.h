#pragma once

#include <QDialog>
#include <memory>

#include "startup/update_check.h"

namespace Ui {
class DlgSplash;
}

namespace corvanel {

/// The splash: what start-up is doing, line by line, the progress of a download, and the button
/// that opens the control window. It stands above all other windows.
class DlgSplash : public QDialog, public SplashView {
  Q_OBJECT

 public:
  explicit DlgSplash(const QString& version);
  ~DlgSplash() override;

  void SetAutoLaunch(bool ticked);
  /// Start-up is done: the button opens the control window.
  void ShowLaunch();

  void Log(const std::string& line) override;
  void ShowDownload(bool shown) override;
  void ShowDownloadProgress(const std::string& sizes, const std::string& remaining,
                            int percent) override;
  bool StopWanted() const override { return stop_; }

 protected:
  void showEvent(QShowEvent* event) override;

 signals:
  void AutoLaunchTicked(bool ticked);

 private:
  std::unique_ptr<Ui::DlgSplash> ui_;
  bool stop_ = false;
};

}  // namespace corvanel
