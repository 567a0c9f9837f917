#include "widgets/qr_view.h"

#include <QPainter>
#include <qrcodegen/qrcodegen.hpp>

namespace corvanel {
namespace {

constexpr int kQuiet = 4;  // modules around the code

}  // namespace

QrView::QrView(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void QrView::Show(const QString& text) {
  dark_.clear();
  if (!text.isEmpty()) {
    using qrcodegen::QrCode;
    const QrCode code = QrCode::encodeText(text.toUtf8().constData(), QrCode::Ecc::MEDIUM);
    for (int y = 0; y < code.getSize(); ++y) {
      std::vector<bool>& row = dark_.emplace_back();
      for (int x = 0; x < code.getSize(); ++x) row.push_back(code.getModule(x, y));
    }
  }
  setAccessibleName(text);
  update();
}

void QrView::paintEvent(QPaintEvent* /*event*/) {
  if (dark_.empty()) return;
  QPainter painter(this);
  const int across = static_cast<int>(dark_.size()) + 2 * kQuiet;
  const int module = std::min(width(), height()) / across;
  const QRect all(0, 0, module * across, module * across);
  const QPoint corner = rect().center() - all.center();
  painter.fillRect(all.translated(corner), Qt::white);
  for (size_t y = 0; y < dark_.size(); ++y) {
    for (size_t x = 0; x < dark_.size(); ++x) {
      const QPoint place =
          corner + QPoint(static_cast<int>(x) + kQuiet, static_cast<int>(y) + kQuiet) * module;
      if (dark_[y][x]) painter.fillRect(QRect(place, QSize(module, module)), Qt::black);
    }
  }
}

}  // namespace corvanel
