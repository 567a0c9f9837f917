#include "display/window/line_icons.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace corvanel {
namespace {

/// What is drawn on a field of 24 by 24.
const char* PathOf(LineIcon icon) {
  switch (icon) {
    case LineIcon::Pause:
      return "M8 5v14M16 5v14";
    case LineIcon::Resume:
      return "M7 4.5v15l12-7.5z";
    case LineIcon::NextRound:
      return "M5 5v14l10-7zM19 5v14";
    case LineIcon::Restart:
      return "M5 12a7 7 0 1 0 2.2-5.1M5 4v4.5h4.5";
    case LineIcon::Less:
      return "M6 12h12";
    case LineIcon::More:
      return "M12 6v12M6 12h12";
    case LineIcon::FullScreen:
      return "M4 9V4h5M15 4h5v5M20 15v5h-5M9 20H4v-5";
    case LineIcon::Window:
      return "M4 6h16v13H4zM4 10h16";
    case LineIcon::Sounds:
      return "M4 9.5v5h4l5 4.5V5L8 9.5zM16.5 8.5a5 5 0 0 1 0 7M19 6a8.5 8.5 0 0 1 0 12";
    case LineIcon::Display:
      return "M5 19L11 5h2l6 14M7.5 14h9";
    case LineIcon::Back:
      return "M20 12H5M11 6l-6 6 6 6";
  }
  return "";
}

QPixmap Drawn(LineIcon icon, const QColor& colour, int size) {
  QSvgRenderer svg(QString(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24">
    <path d="%1" fill="none" stroke="%2" stroke-width="2" stroke-linecap="round"
          stroke-linejoin="round"/></svg>)")
                       .arg(PathOf(icon), colour.name())
                       .toUtf8());
  QPixmap picture(size, size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  svg.render(&painter);
  return picture;
}

}  // namespace

QIcon IconOf(LineIcon icon, const QColor& colour, const QColor& off, int size) {
  QIcon drawn;
  drawn.addPixmap(Drawn(icon, colour, size), QIcon::Normal);
  drawn.addPixmap(Drawn(icon, off, size), QIcon::Disabled);
  return drawn;
}

}  // namespace corvanel
