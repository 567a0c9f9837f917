#include "display/window/room_miniature.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "display/display_options.h"
#include "display/element_places.h"
#include "display/window/text_measure.h"
#include "session/captions.h"
#include "session/contrast.h"

namespace corvanel {
namespace {

constexpr QSize kRoom(1280, 720);  // pixels
constexpr QSize kSmall(384, 216);
constexpr double kAroundSample = 6;  // pixels
constexpr double kAroundChosen = 8;  // of the room's pixels
constexpr double kLine = 2;          // pixels

}  // namespace

RoomMiniature::RoomMiniature(const Session& session, QWidget* parent)
    : QWidget(parent),
      session_(session),
      shown_(session),
      picture_(shown_, DisplayKind::Room, nullptr) {
  setObjectName("roomMiniature");
  setAccessibleName(tr("The room display in small"));
  setToolTip(tr("Click what you want to change"));
  setCursor(Qt::PointingHandCursor);
  setFixedSize(kSmall);
  picture_.resize(kRoom);
}

QSize RoomMiniature::sizeHint() const {
  return kSmall;
}

double RoomMiniature::Scale() const {
  return static_cast<double>(kSmall.width()) / kRoom.width();
}

void RoomMiniature::Show(Element chosen, const ClockFace& face, const ProgressFace& tables) {
  chosen_ = chosen;
  countdown_ = face.countdownStyle;
  shown_ = session_;
  std::string& title = shown_.settings.Header;
  if (ShownTitle(title).empty()) title = DisplayOptions::Sample(Element::Title);
  picture_.ShowTimeOfDay(DisplayOptions::Sample(Element::CurrentTime));
  picture_.ShowFace(face);
  picture_.ShowTables(tables);
  picture_.Rearrange();
  update();
}

void RoomMiniature::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(Scale(), Scale());
  picture_.render(&painter);
  painter.setPen(QPen(ColourOf(Contrast(picture_.Background())), kLine / Scale(), Qt::DashLine));
  std::vector<Place> places = PlacesOf(picture_.TheLayout(), chosen_);
  if (chosen_ == Element::ScreenBackground) {
    places = {{kAroundChosen, kAroundChosen, kRoom.width() - 2 * kAroundChosen,
               kRoom.height() - 2 * kAroundChosen}};
  }
  for (const Place& place : places) {
    painter.drawRoundedRect(QRectF(place.x - kAroundChosen / 2, place.y - kAroundChosen / 2,
                                   place.width + kAroundChosen, place.height + kAroundChosen),
                            kAroundChosen, kAroundChosen);
  }
}

void RoomMiniature::mousePressEvent(QMouseEvent* event) {
  const QPointF place = event->position() / Scale();
  emit Chosen(ElementAt(picture_.TheLayout(), countdown_, place.x(), place.y()));
}

void StyleSample::Show(const std::string& text, const ElementStyle& style) {
  text_ = QString::fromStdString(text);
  style_ = style;
  update();
}

QFont StyleSample::ShownFont() const {
  QFont font = FontOf(style_, style_.Size);
  const QFontMetricsF metrics(font);
  // A sample that is cut off shows less than a smaller one.
  const double share = std::min((width() - 2 * kAroundSample) / metrics.horizontalAdvance(text_),
                                height() / metrics.height());
  if (share < 1) font.setPointSizeF(font.pointSizeF() * share);
  return font;
}

void StyleSample::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), ColourOf(style_.Backcolour));
  painter.setPen(ColourOf(style_.Forecolour));
  painter.setFont(ShownFont());
  painter.drawText(rect(), Qt::AlignCenter, text_);
}

}  // namespace corvanel
