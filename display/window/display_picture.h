#pragma once

#include <QWidget>

#include "display/layout.h"
#include "display/shortcuts.h"
#include "display/units_shown.h"
#include "session/session_listener.h"

namespace corvanel {

class CountdownPanel;
class ProgressFrame;
class TextRow;

/// The clock's face as large as its widget allows: all that a display shows of the session. Takes
/// no part in mouse events; they are the window's.
class DisplayPicture : public QWidget {
  Q_OBJECT

 public:
  /// `kind`: the room's picture has a line of its own for the move message, and shows of the units
  /// only what the players may see.
  DisplayPicture(const Session& session, DisplayKind kind, QWidget* parent);

  /// These note what is new, and repaint what of it is shown.
  void ShowFace(const ClockFace& face);
  void ShowTimeOfDay(const std::string& time);
  void ShowTables(const ProgressFace& tables);
  /// Takes over fonts, colours and shown elements from the session and places everything anew.
  void Rearrange();

  Colour Background() const;
  const Layout& TheLayout() const { return layout_; }
  /// Where the countdown stands on the desktop, in pixels.
  QRect CountdownOnScreen() const;
  /// Who is at the table whose cell is at a point; empty where there is none.
  QString TableTipAt(const QPoint& point) const;

 signals:
  /// A new state of the session, and the time, as a screen reader says them.
  void Announced(const QString& spoken);

 private:
  LayoutInput Input() const;
  UnitsShown Units() const;
  void FillProgress();
  void PlaceElements();
  void PlaceProgress();
  void ShowTexts();

  const Session& session_;
  DisplayKind kind_;
  ClockFace face_;
  ProgressFace tables_;
  LayoutInput placed_;  // what the present layout was made for
  Layout layout_;
  TextRow* lblHeader_;
  TextRow* lblNow_;
  CountdownPanel* lblMin_;
  TextRow* lblInfo_;
  TextRow* moveLine_;  // the line of the caption, unless there is one more
  TextRow* lblState_;
  TextRow* lblEnd_;
  TextRow* lblBridgemate_;
  ProgressFrame* fraProgress_;
};

}  // namespace corvanel
