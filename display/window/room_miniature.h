#pragma once

#include "display/window/display_picture.h"
#include "session/display_elements.h"

namespace corvanel {

/// The room display in small, as the options would have it. The chosen element has a line around
/// it; a click on another chooses that.
class RoomMiniature : public QWidget {
  Q_OBJECT

 public:
  explicit RoomMiniature(const Session& session, QWidget* parent);
  /// Shows this state of the evening, in which `chosen` can be seen.
  void Show(Element chosen, const ClockFace& face, const ProgressFace& tables);
  QSize sizeHint() const override;

 signals:
  void Chosen(Element element);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  /// Of the small picture, pixels for one of the room's.
  double Scale() const;

  const Session& session_;
  Session shown_;  // the same, with a title where there is none
  DisplayPicture picture_;
  Element chosen_ = Element::TimeRemaining;
  Element countdown_ = Element::TimeRemaining;
};

/// A text in the style of an element, painted as the displays paint theirs, whatever style the
/// windows around it have.
class StyleSample : public QWidget {
  Q_OBJECT

 public:
  explicit StyleSample(QWidget* parent) : QWidget(parent) {}
  void Show(const std::string& text, const ElementStyle& style);
  const QString& Text() const { return text_; }
  /// The style's font, smaller where the text would be cut off.
  QFont ShownFont() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
  ElementStyle style_;
};

}  // namespace corvanel
