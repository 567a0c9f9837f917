#pragma once

#include <QDialog>
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

  /// A sound that is tested has begun, or is over.
  void Tested(const SoundTest& test);
  /// Shows anew what the files are and how the test fares.
  void ShowSounds();

 private:
  QCheckBox* PlayBox(size_t cue) const;
  QCheckBox* FinalBox(size_t warning) const;
  void ConnectSlot(size_t cue);
  void ShowFile(size_t cue);

  SoundOptions& logic_;
  std::unique_ptr<Ui::FrmSound> ui_;
};

}  // namespace corvanel
