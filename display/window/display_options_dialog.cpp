#include "display/window/display_options_dialog.h"

#include <QAbstractItemView>
#include <QColorDialog>
#include <QFontDialog>

#include "display/window/room_miniature.h"
#include "display/window/text_measure.h"
#include "ui_display_options_dialog.h"

namespace corvanel {
DisplayOptionsDialog::DisplayOptionsDialog(DisplayOptions& logic, QWidget* parent)
    : QDialog(parent),
      logic_(logic),
      ui_(std::make_unique<Ui::DisplayOptionsDialog>()),
      miniature_(new RoomMiniature(logic.TheSession(), this)) {
  ui_->setupUi(this);
  const std::vector<std::string> names = logic_.Names();
  for (size_t i = 0; i < names.size(); ++i) {
    const std::string word = logic_.RoomWord(static_cast<Element>(i));
    const QString name = QString::fromStdString(names[i]);
    ui_->lstFonts->addItem(
        word.empty() ? name : QString("%1 (%2)").arg(name, QString::fromStdString(word)));
  }
  ui_->layoutRight->insertWidget(0, miniature_, 0, Qt::AlignHCenter);
  ui_->lblSample->setFixedWidth(miniature_->width());
  ui_->layoutRight->setAlignment(ui_->lblSample, Qt::AlignHCenter);
  connect(miniature_, &RoomMiniature::Chosen, this,
          [this](Element element) { ui_->lstFonts->setCurrentRow(static_cast<int>(element)); });
  const Options& options = logic_.Live();
  (options.TimeAs24hour ? ui_->optTime_0 : ui_->optTime_1)->setChecked(true);
  for (const int seconds : kCountdownSteps)
    ui_->cmbSecs->addItem(QString::number(seconds), seconds);
  ui_->cmbSecs->view()->setAccessibleName(ui_->lblSecs->text());
  ui_->lstFonts->setAccessibleName(tr("Element"));
  // A stored step that is not offered leaves the list without a selection.
  ui_->cmbSecs->setCurrentIndex(ui_->cmbSecs->findData(int{options.TimeChange}));
  rows_ = std::make_unique<OptionRows>(*this);
  rows_->Show([&options](const std::string& key) { return OptionText(options, key); });
  rows_->NameUnit(options.TableTopUnit);
  rows_->OnClick([this](const std::string& key, const std::string& text) {
    logic_.Set(key, text);
    ShowSelected();
  });
  connect(ui_->lstFonts, &QListWidget::currentRowChanged, this, [this] { ShowSelected(); });
  connect(ui_->cmdFont, &QPushButton::clicked, this, [this] { cmdFont_Click(); });
  connect(ui_->cmdColour, &QPushButton::clicked, this,
          [this] { ChangeColour(&ElementStyle::Backcolour); });
  connect(ui_->cmdForecolour, &QPushButton::clicked, this,
          [this] { ChangeColour(&ElementStyle::Forecolour); });
  connect(ui_->optTime_0, &QRadioButton::clicked, this, [this] {
    logic_.Set("TimeAs24hour", "True");
    ShowSelected();
  });
  connect(ui_->optTime_1, &QRadioButton::clicked, this, [this] {
    logic_.Set("TimeAs24hour", "False");
    ShowSelected();
  });
  connect(ui_->cmbSecs, &QComboBox::activated, this,
          [this] { logic_.Set("TimeChange", ui_->cmbSecs->currentText().toStdString()); });
  connect(ui_->cmdRestore, &QPushButton::clicked, this, [this] {
    logic_.cmdRestore_Click();
    ShowSelected();
  });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(this, &QDialog::accepted, this, [this] { logic_.cmdClose_Click(rows_->Keys()); });
  connect(this, &QDialog::rejected, this, [this] { logic_.cmdCancel_Click(); });
  ui_->lstFonts->setCurrentRow(0);
}

DisplayOptionsDialog::~DisplayOptionsDialog() = default;

Element DisplayOptionsDialog::Selected() const {
  return static_cast<Element>(ui_->lstFonts->currentRow());
}

void DisplayOptionsDialog::ShowSelected() {
  const Element element = Selected();
  ui_->lblSample->Show(DisplayOptions::Sample(element), logic_.SampleStyle(element));
  miniature_->Show(element, logic_.SampleFace(element), DisplayOptions::SampleTables(element));
  ui_->lblFonts->setText(QString::fromStdString(DisplayOptions::SizeNote(element)));
  ui_->lblContrast->setText(QString::fromStdString(logic_.ContrastNote(element)));
}

void DisplayOptionsDialog::cmdFont_Click() {
  ElementStyle style = logic_.StyleOf(Selected());
  const auto font = ChooseFont(FontOf(style, style.Size));
  if (!font) return;
  style.Name = font->family().toStdString();
  style.Size = static_cast<float>(font->pointSizeF());
  style.Bold = font->bold();
  style.Italic = font->italic();
  style.Strikethrough = font->strikeOut();
  style.Underline = font->underline();
  logic_.SetStyle(Selected(), style);
  ShowSelected();
}

void DisplayOptionsDialog::ChangeColour(Colour ElementStyle::*colour) {
  ElementStyle style = logic_.StyleOf(Selected());
  const auto chosen = ChooseColour(ColourOf(style.*colour));
  if (!chosen) return;
  style.*colour = {static_cast<uint8_t>(chosen->red()), static_cast<uint8_t>(chosen->green()),
                   static_cast<uint8_t>(chosen->blue())};
  logic_.SetStyle(Selected(), style);
  ShowSelected();
}

std::optional<QFont> DisplayOptionsDialog::ChooseFont(const QFont& present) {
  bool chosen = false;
  const QFont font = QFontDialog::getFont(&chosen, present, this);
  return chosen ? std::optional(font) : std::nullopt;
}

std::optional<QColor> DisplayOptionsDialog::ChooseColour(const QColor& present) {
  const QColor colour = QColorDialog::getColor(present, this);
  return colour.isValid() ? std::optional(colour) : std::nullopt;
}

}  // namespace corvanel
