#include "display/window/frm_display.h"

#include <QLabel>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "session/contrast.h"
#include "widgets/colours.h"
#include "widgets/qr_view.h"

namespace corvanel {
namespace {

// Of the window's shorter side.
constexpr double kCode = 0.17;
constexpr double kCodeAtLeisure = 0.42;
constexpr double kBeside = 0.03;  // free on the right of the code
constexpr double kLetters = 0.034;

}  // namespace

FrmDisplay::FrmDisplay(const Session& session, DisplayCommands& commands, LetterOfKey letterOfKey)
    : DisplayWindow(session, DisplayKind::Room, commands, letterOfKey),
      qrAddress_(new QrView(this)),
      lblAddress_(new QLabel(this)) {
  setObjectName("frmDisplay");
  qrAddress_->setObjectName("qrAddress");
  lblAddress_->setObjectName("lblAddress");
  lblAddress_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  for (QWidget* part : {static_cast<QWidget*>(qrAddress_), static_cast<QWidget*>(lblAddress_)}) {
    part->setAttribute(Qt::WA_TransparentForMouseEvents);
    part->lower();
    part->hide();
  }
}

void FrmDisplay::ShowFace(const ClockFace& face) {
  const bool atLeisure = face.phase == Phase::Break || face.phase == Phase::Ended;
  const bool other = std::exchange(atLeisure_, atLeisure) != atLeisure;
  DisplayWindow::ShowFace(face);
  if (other && !address_.isEmpty()) Rearrange();
}

void FrmDisplay::ShowAddress(const QString& address) {
  if (std::exchange(address_, address) == address) return;
  qrAddress_->Show(address);
  Rearrange();
}

int FrmDisplay::SideWidth() const {
  if (address_.isEmpty()) return 0;
  const double share = (atLeisure_ ? kCodeAtLeisure : kCode) + kBeside;
  return static_cast<int>(share * std::min(width(), height()));
}

void FrmDisplay::PlaceEdges() {
  const int side = SideWidth();
  qrAddress_->setVisible(side > 0);
  lblAddress_->setVisible(side > 0);
  if (side == 0) return;
  const int shorter = std::min(width(), height());
  const int code = side - static_cast<int>(kBeside * shorter);
  const QString place = QUrl(address_).authority();  // what is typed by hand
  lblAddress_->setText(atLeisure_ ? tr("On your phone:\n%1").arg(place) : place);
  QFont font = lblAddress_->font();
  font.setPixelSize(100);
  const double wide = QFontMetricsF(font).horizontalAdvance(place) / 100;
  font.setPixelSize(static_cast<int>(std::clamp(kLetters * shorter, 6.0, code / wide)));
  lblAddress_->setFont(font);
  QPalette colours = lblAddress_->palette();
  colours.setColor(QPalette::WindowText, ColourOf(Contrast(Background())));
  lblAddress_->setPalette(colours);
  const int left = width() - side;
  const int words = lblAddress_->sizeHint().height();
  const int top = (height() - code - words) / 2;
  qrAddress_->setGeometry(left, top, code, code);
  lblAddress_->setGeometry(left, top + code + shorter / 100, code, words);
}

}  // namespace corvanel
