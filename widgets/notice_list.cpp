#include "widgets/notice_list.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace corvanel {
namespace {

/// Colours of its own: it must stand out on the displays' every background and in both themes.
constexpr const char* kStyle = R"(
  corvanel--NoticeList { background: #FFF3CD; border: 1px solid #C99A2E; border-radius: 6px; }
  QLabel { color: #3D2E00; background: transparent; border: none; }
  QToolButton { color: #3D2E00; background: #FFE08A; border: 1px solid #C99A2E;
                border-radius: 4px; padding: 2px 8px; }
  QToolButton:hover { background: #FFD35C; }
  QToolButton[quiet="true"] { background: transparent; border: none; padding: 2px 6px; }
  QToolButton[quiet="true"]:hover { background: #FFE08A; }
)";

/// A word longer than any, such as the name of a file, may break anywhere: else it would widen the
/// window.
QString Breakable(const QString& text) {
  constexpr int kLongest = 30;
  constexpr QChar kMayBreak(0x200B);
  QString broken;
  int run = 0;
  for (const QChar sign : text) {
    broken += sign;
    run = sign.isSpace() ? 0 : run + 1;
    if (run % kLongest == kLongest - 1 && !sign.isHighSurrogate()) broken += kMayBreak;
  }
  return broken;
}

}  // namespace

NoticeList::NoticeList(QWidget* parent) : QFrame(parent) {
  setStyleSheet(QString::fromUtf8(kStyle));
  setCursor(Qt::ArrowCursor);
  auto* lines = new QVBoxLayout(this);
  lines->setContentsMargins(10, 2, 4, 2);
  lines->setSpacing(0);
  hide();
}

QWidget* NoticeList::LineOf(const Notice& notice, const QString& more) {
  auto* line = new QWidget(this);
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(0, 2, 0, 2);
  auto* text = new QLabel(Breakable(QString::fromStdString(notice.text) + more), line);
  text->setObjectName("lblNotice");
  text->setTextFormat(Qt::PlainText);
  text->setWordWrap(true);
  row->addWidget(text, 1);
  const auto add = [&](const char* name, const QString& caption) {
    auto* button = new QToolButton(line);
    button->setObjectName(name);
    button->setText(caption);
    button->setFocusPolicy(Qt::NoFocus);
    row->addWidget(button);
    return button;
  };
  if (!notice.action.empty()) {
    connect(add("cmdNotice", QString::fromStdString(notice.action)), &QToolButton::clicked, this,
            [this, notice] { emit ActionWanted(notice); });
  }
  QToolButton* dismiss = add("cmdNoticeClose", QStringLiteral("×"));
  dismiss->setProperty("quiet", true);
  dismiss->setToolTip(tr("Dismiss"));
  dismiss->setAccessibleName(dismiss->toolTip());
  connect(dismiss, &QToolButton::clicked, this, [this, notice] { emit Dismissed(notice); });
  return line;
}

void NoticeList::SetTextSize(int pixels) {
  const QString style =
      QString::fromUtf8(kStyle) + QString("QLabel, QToolButton { font-size: %1px; }").arg(pixels);
  if (styleSheet() != style) setStyleSheet(style);
}

void NoticeList::ShowNotices(const std::vector<Notice>& notices) {
  if (notices == shown_) return;
  shown_ = notices;
  while (QLayoutItem* item = layout()->takeAt(0)) {
    // Perhaps the button of this very line was pressed.
    item->widget()->hide();
    item->widget()->deleteLater();
    delete item;
  }
  const size_t waiting = notices.size() > most_ ? notices.size() - most_ : 0;
  for (size_t i = waiting; i < notices.size(); ++i) {
    const bool last = waiting > 0 && i + 1 == notices.size();
    QWidget* line = LineOf(notices[i], last ? tr(" (and %1 more)").arg(waiting) : QString());
    layout()->addWidget(line);
    // Else it would be shown, and have a size, only after this.
    line->show();
    for (QWidget* part : line->findChildren<QWidget*>()) part->ensurePolished();
  }
  setVisible(!notices.empty());
  updateGeometry();
}

}  // namespace corvanel
