#include "control/window/dlg_welcome.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "session/timetable.h"

namespace corvanel {
namespace {

constexpr int kMostRounds = 40;
constexpr int kMostMinutes = 90;

QSpinBox* NumberBox(const char* name, int most, int value) {
  auto* box = new QSpinBox;
  box->setObjectName(name);
  box->setLocale(QLocale::c());  // the digits that all else has
  box->setRange(1, most);
  box->setValue(value);
  QFont large = box->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  box->setFont(large);
  return box;
}

}  // namespace

DlgWelcome::DlgWelcome(const Session& session, ClockTime start, qsizetype screens, QWidget* parent)
    : QDialog(parent),
      session_(session),
      start_(start),
      rounds_(NumberBox("spnRounds", kMostRounds, session.settings.nRounds)),
      minutes_(
          NumberBox("spnMinutes", kMostMinutes, static_cast<int>(session.settings.MinPerRound))),
      second_(new QCheckBox(tr("&Show the room display on the second screen"))),
      finish_(new QLabel) {
  setObjectName("dlgWelcome");
  setWindowTitle(tr("Welcome to Corvanel"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(28, 24, 28, 20);
  column->setSpacing(14);
  auto* text = new QLabel(tr("Enter two numbers and start. Everything else can be set later."));
  text->setWordWrap(true);
  column->addWidget(text);
  auto* form = new QFormLayout;
  form->setHorizontalSpacing(20);
  form->addRow(tr("&Rounds"), rounds_);
  form->addRow(tr("&Minutes per round"), minutes_);
  column->addLayout(form);
  second_->setObjectName("chkMonitor");
  second_->setChecked(screens > 1);
  column->addWidget(second_);
  second_->setVisible(screens > 1);
  finish_->setObjectName("lblFinish");
  column->addWidget(finish_);
  auto* buttons = new QDialogButtonBox;
  cmdStart_ = buttons->addButton(tr("Start the &clock"), QDialogButtonBox::AcceptRole);
  cmdStart_->setDefault(true);
  buttons->addButton(tr("&Look around first"), QDialogButtonBox::RejectRole);
  column->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  for (const QSpinBox* box : {rounds_, minutes_}) {
    connect(box, &QSpinBox::valueChanged, this, &DlgWelcome::ShowFinish);
  }
  ShowFinish();
  rounds_->setFocus();
  rounds_->selectAll();
}

void DlgWelcome::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && rounds_->hasFocus()) {
    minutes_->setFocus();
    minutes_->selectAll();
  } else if (enter && minutes_->hasFocus()) {
    cmdStart_->setFocus();
  } else {
    QDialog::keyPressEvent(event);
  }
}

SessionSettings DlgWelcome::Settings() const {
  SessionSettings settings = session_.settings;
  settings.nRounds = static_cast<int16_t>(rounds_->value());
  settings.MinPerRound = static_cast<float>(minutes_->value());
  // The break in the middle, and none in a session too short to have one.
  settings.BreakAfterRound = static_cast<int16_t>(settings.nRounds / 2);
  settings.optBreak = settings.nRounds >= 4;
  settings.ExtraMonitor = second_->isChecked();
  return settings;
}

void DlgWelcome::ShowFinish() {
  const Schedule schedule = CalcFinishTime(Settings(), 1, start_);
  const TimeForm form = session_.options.Form();
  finish_->setText(tr("Start now and you finish at %1.")
                       .arg(QString::fromStdString(TimeText(schedule.finish, form))));
}

}  // namespace corvanel
