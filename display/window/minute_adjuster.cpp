#include "display/window/minute_adjuster.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace corvanel {

MinuteAdjuster::MinuteAdjuster(QWidget* parent) : QAbstractSlider(parent) {
  setObjectName("vsbChange");
  setAccessibleName(tr("Add or take off a minute"));
  setRange(-1, 1);
  setFocusPolicy(Qt::NoFocus);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  // Deliberate: one step up of the adjuster, -1, adds a minute.
  less_ = Add("cmdLess", tr("−1"), tr("Take off a minute (-)"), 1);
  more_ = Add("cmdMore", tr("+1"), tr("Add a minute (+)"), -1);
  connect(this, &QAbstractSlider::valueChanged, this, [this](int value) {
    if (value == 0) return;
    setValue(0);
    emit Moved(value);
  });
}

QToolButton* MinuteAdjuster::Add(const char* name, const QString& text, const QString& hint,
                                 int value) {
  auto* button = new QToolButton(this);
  button->setObjectName(name);
  button->setText(text);
  button->setToolTip(hint);
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QToolButton::clicked, this, [this, value] { setValue(value); });
  layout()->addWidget(button);
  return button;
}

QSize MinuteAdjuster::sizeHint() const {
  return layout()->sizeHint();
}

}  // namespace corvanel
