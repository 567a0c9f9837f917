#pragma once

#include <QDialog>
#include <memory>
#include <optional>

#include "display/display_options.h"

namespace Ui {
class FrmFont;
}

namespace corvanel {

/// The dialog of the display options.
class FrmFont : public QDialog {
  Q_OBJECT

 public:
  FrmFont(DisplayOptions& logic, QWidget* parent);
  ~FrmFont() override;

 protected:
  /// The platform's choosers; nothing when the director cancels.
  virtual std::optional<QFont> ChooseFont(const QFont& present);
  virtual std::optional<QColor> ChooseColour(const QColor& present);

 private:
  Element Selected() const;
  void ShowSelected();
  void ConnectBoxes();
  void cmdFont_Click();
  void ChangeColour(int32_t ElementStyle::*colour);

  DisplayOptions& logic_;
  std::unique_ptr<Ui::FrmFont> ui_;
};

}  // namespace corvanel
