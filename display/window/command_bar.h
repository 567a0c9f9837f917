#pragma once

#include <QFrame>
#include <vector>

class QScrollBar;
class QToolButton;

namespace corvanel {

/// The bar of buttons on a display: shown while the director moves the mouse. Its buttons never
/// take the keyboard focus, so that the window's keys work all the time.
class CommandBar : public QFrame {
  Q_OBJECT

 public:
  explicit CommandBar(QWidget* parent);
  /// Of each pair of buttons exactly one is visible.
  void ShowPaused(bool paused);
  void ShowFullScreen(bool fullScreen);
  /// Sets itself along the lower edge of a window of this size, with as much text as fits.
  void FitInto(const QSize& window);

 signals:
  void PauseClicked();
  void ResumeClicked();
  void NextRoundClicked();
  void RestartClicked();
  void FullScreenClicked(int index);
  void CloseClicked();
  void SoundsClicked();
  void OptionsClicked();
  void ChangeClicked();
  void MinutesMoved(int value);

 private:
  QToolButton* Add(const char* name, const QString& text, const QString& hint, int icon);

  QToolButton* pause_;
  QToolButton* resume_;
  QToolButton* full_;
  QToolButton* normal_;
  QScrollBar* minutes_;
  std::vector<QToolButton*> buttons_;
  QSize window_;  // that the bar was last fitted into
};

}  // namespace corvanel
