#include "control/window/page_style.h"

#include <QLineEdit>

#include "widgets/colours.h"

namespace corvanel {
namespace {

/// Cards on a calm ground, one strong button. But for one accent, dark enough for white text in
/// both kinds of palette, every colour is the desktop's own. `%1`: of what matters less; `%2`: of
/// the edges of fields, which are seen on any ground; `%4`: behind what a scoring file brought.
constexpr const char* kStyle = R"(
  QFrame[card="true"] {
    background: palette(base); border: 1px solid palette(midlight); border-radius: 8px;
  }
  QLabel[heading="true"] { font-weight: 600; }
  QLabel[quiet="true"] { color: %1; }
  QLabel[big="true"] { font-size: 24pt; font-weight: 700; padding-right: 10px; }
  QLabel[result="true"] { font-weight: 600; padding-right: 4px; }
  QLabel { border: none; }
  QLabel[held="true"] {
    background: #F5B301; color: #10203C; border-radius: 4px; padding: 1px 6px; font-weight: 700;
  }
  QLineEdit { border: 1px solid %2; border-radius: 4px; padding: 2px 6px; }
  QLineEdit[taken="true"] { background: %4; }
  QLineEdit:focus { border: 2px solid #2F7DE1; padding: 1px 5px; }
  QPushButton { padding: 5px 12px; }
  QPushButton[segment] {
    border: 1px solid palette(mid); background: palette(base); padding: 4px 10px;
    font-weight: 600;
  }
  QPushButton[segment="left"] { border-top-left-radius: 6px; border-bottom-left-radius: 6px; }
  QPushButton[segment="right"] {
    border-left: none; border-top-right-radius: 6px; border-bottom-right-radius: 6px;
  }
  QPushButton[segment]:checked { background: %3; border-color: %3; color: white; }
  QPushButton[segment]:focus { text-decoration: underline; }
  QPushButton[primary="true"] {
    background: %3; color: white; border: 2px solid %3; border-radius: 8px;
    font-size: 13pt; font-weight: 600; padding: 8px 16px;
  }
  QPushButton[primary="true"]:hover { background: #2A6FD4; }
  QPushButton[primary="true"]:pressed { background: #174A96; }
  *[off="true"] { color: %1; }
  QPushButton[primary="true"]:focus { border-color: palette(text); }
)";

constexpr double kTaken = 0.14;  // of the accent behind what a scoring file brought
constexpr double kEdge = 0.45;   // of the text's colour in the edges of fields

/// Of what matters less: it recedes, and can still be read.
QColor QuietColour(const QPalette& palette) {
  constexpr double kShare = 0.58;
  return Mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), kShare);
}

}  // namespace

void DressPage(QWidget& page) {
  QPalette palette = page.palette();
  const QColor quiet = QuietColour(palette);
  const QColor edge = Mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), kEdge);
  const QColor taken = Mixed(kAccent, palette.color(QPalette::Base), kTaken);
  palette.setColor(QPalette::PlaceholderText, quiet);
  page.setPalette(palette);
  page.setStyleSheet(
      QString::fromUtf8(kStyle).arg(quiet.name(), edge.name(), kAccent.name(), taken.name()));
  // The style sheet hands the page's palette on to the fields, but for this.
  for (QLineEdit* field : page.findChildren<QLineEdit*>()) {
    QPalette own = field->palette();
    own.setColor(QPalette::PlaceholderText, quiet);
    field->setPalette(own);
  }
}

}  // namespace corvanel
