#include "scoring/window/frm_play_time.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace corvanel {

FrmPlayTime::FrmPlayTime(std::string title, std::vector<SectionTimes> times,
                         const QString& textFile, QWidget* parent)
    : QDialog(parent), page_(new PlayTimePage(std::move(title), std::move(times))) {
  setObjectName("frmPlayTime");
  setWindowTitle(tr("Play times"));
  auto* area = new QScrollArea(this);
  area->setWidget(page_);
  area->setAlignment(Qt::AlignHCenter);
  auto* lblFile = new QLabel(textFile.isEmpty() ? tr("The report's text could not be written")
                                                : tr("Text: %1").arg(textFile),
                             this);
  lblFile->setObjectName("lblFile");
  lblFile->setTextFormat(Qt::PlainText);
  lblFile->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* cmdText = new QPushButton(tr("&Open the text"), this);
  cmdText->setObjectName("cmdText");
  cmdText->setEnabled(!textFile.isEmpty());
  auto* cmdSave = new QPushButton(tr("&Save as PDF or PNG..."), this);
  cmdSave->setObjectName("cmdSave");
  auto* cmdClose = new QPushButton(tr("Close"), this);
  cmdClose->setObjectName("cmdClose");
  cmdClose->setDefault(true);
  auto* row = new QHBoxLayout;
  row->addWidget(lblFile, 1);
  for (QPushButton* button : {cmdText, cmdSave, cmdClose}) row->addWidget(button);
  auto* column = new QVBoxLayout(this);
  column->addWidget(area, 1);
  column->addLayout(row);
  connect(cmdText, &QPushButton::clicked, this, &FrmPlayTime::TextWanted);
  connect(cmdSave, &QPushButton::clicked, this, &FrmPlayTime::SaveWanted);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  const QSize room = screen()->availableSize() - QSize(24, 60);
  page_->FitInto(room.width() - 60);
  resize(QSize(page_->width() + 60, page_->height() + 90).boundedTo(room));
}

}  // namespace corvanel
