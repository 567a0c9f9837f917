#include "display/window/line_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <cctype>
#include <cmath>
#include <cstdlib>

namespace corvanel {
namespace {

/// What is drawn on a field of 24 by 24, as SVG has it.
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

/// The few commands of SVG's path data that the icons need, as lines for the painter: M, L, H, V, A
/// (of circles) and Z, with places from the last one on where the letter is small.
class PathReader {
 public:
  explicit PathReader(const char* data) : at_(data) {}

  QPainterPath Read() {
    char command = 'M';
    for (SkipBlanks(); *at_ != '\0'; SkipBlanks()) {
      if (std::isalpha(static_cast<unsigned char>(*at_)) != 0) command = *at_++;
      const bool from = std::islower(static_cast<unsigned char>(command)) != 0;
      const QPointF here = from ? path_.currentPosition() : QPointF();
      switch (std::toupper(static_cast<unsigned char>(command))) {
        case 'M':
          path_.moveTo(here + Point());
          command = from ? 'l' : 'L';
          break;
        case 'L':
          path_.lineTo(here + Point());
          break;
        case 'H':
          path_.lineTo(here.x() + Number(), path_.currentPosition().y());
          break;
        case 'V':
          path_.lineTo(path_.currentPosition().x(), here.y() + Number());
          break;
        case 'A':
          Arc(here);
          break;
        default:
          path_.closeSubpath();
          break;
      }
    }
    return path_;
  }

 private:
  void SkipBlanks() {
    while (*at_ == ' ' || *at_ == ',') ++at_;
  }
  double Number() {
    char* end = nullptr;
    const double number = std::strtod(at_, &end);
    at_ = end;
    return number;
  }
  QPointF Point() {
    const double x = Number();
    return {x, Number()};
  }

  void Arc(const QPointF& here) {
    const double radius = Number();
    Number();  // the other radius
    Number();  // a circle can be turned as one likes
    const bool large = Number() != 0;
    const bool clockwise = Number() != 0;
    const QPointF from = path_.currentPosition();
    const QPointF to = here + Point();
    const QLineF chord(from, to);
    const double aside =
        std::sqrt(std::max(radius * radius - std::pow(chord.length() / 2, 2), 0.0));
    const QLineF across = chord.normalVector().unitVector();
    const QPointF middle =
        chord.center() + QPointF(across.dx(), across.dy()) * (large == clockwise ? aside : -aside);
    const double start = QLineF(middle, from).angle();
    double sweep = QLineF(middle, to).angle() - start;
    if (clockwise && sweep > 0) sweep -= 360;
    if (!clockwise && sweep < 0) sweep += 360;
    path_.arcTo(middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius, start, sweep);
  }

  const char* at_;
  QPainterPath path_;
};

QPixmap Drawn(LineIcon icon, const QColor& colour, int size) {
  QPixmap picture(size, size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 24.0, size / 24.0);
  painter.strokePath(PathReader(PathOf(icon)).Read(),
                     QPen(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
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
