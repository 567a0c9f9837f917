#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "settings/sound_options.h"

class QCheckBox;

namespace Ui {
class FrmSound;
}

namespace corvanel {

/// The dialog of the sound options.
class FrmSound : public QDialog {
  Q_OBJECT

 public:
  FrmSound(SoundOptions& logic, QWidget* parent);
  ~FrmSound() override;

  /// The next step of "Test all": plays one more cue, until all were heard.
  void TestNext();

 private:
  QCheckBox* PlayBox(size_t cue) const;
  QCheckBox* FinalBox(size_t warning) const;
  void ConnectSlot(size_t cue);
  void ShowFile(size_t cue);

  SoundOptions& logic_;
  std::unique_ptr<Ui::FrmSound> ui_;
  QTimer testAll_;
  size_t nextTest_ = kCues;
};

}  // namespace corvanel
