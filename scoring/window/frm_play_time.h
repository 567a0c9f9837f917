#pragma once

#include <QDialog>

#include "scoring/window/play_time_page.h"

namespace corvanel {

/// The play-time report to look at: the picture, where the text lies, and a button to save the
/// picture.
class FrmPlayTime : public QDialog {
  Q_OBJECT

 public:
  /// `textFile`: where the report's text was written; empty when it could not be.
  FrmPlayTime(std::string title, std::vector<SectionTimes> times, const QString& textFile,
              QWidget* parent);

 signals:
  /// The director wants the picture saved.
  void SaveWanted();
  void TextWanted();

 public:
  const PlayTimePage& Page() const { return *page_; }

 private:
  PlayTimePage* page_;
};

}  // namespace corvanel
