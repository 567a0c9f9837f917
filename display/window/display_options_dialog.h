#pragma once

#include <QDialog>
#include <memory>
#include <optional>

#include "display/display_options.h"
#include "widgets/option_rows.h"

namespace Ui {
class DisplayOptionsDialog;
}

namespace corvanel {

class RoomMiniature;

/// The dialog of the display options.
class DisplayOptionsDialog : public QDialog {
  Q_OBJECT

 public:
  DisplayOptionsDialog(DisplayOptions& logic, QWidget* parent);
  ~DisplayOptionsDialog() override;

 protected:
  /// The platform's choosers; nothing when the director cancels.
  virtual std::optional<QFont> ChooseFont(const QFont& present);
  virtual std::optional<QColor> ChooseColour(const QColor& present);

 private:
  Element Selected() const;
  void ShowSelected();
  void cmdFont_Click();
  void ChangeColour(Colour ElementStyle::*colour);

  DisplayOptions& logic_;
  std::unique_ptr<Ui::DisplayOptionsDialog> ui_;
  std::unique_ptr<OptionRows> rows_;
  RoomMiniature* miniature_;
};

}  // namespace corvanel
