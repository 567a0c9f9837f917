#pragma once

#include <QWidget>
#include <vector>

namespace corvanel {

/// A text as a QR code, for phones to read: dark on white whatever the desktop's colours are, with
/// the quiet zone around it that readers want.
class QrView : public QWidget {
  Q_OBJECT

 public:
  explicit QrView(QWidget* parent);
  /// An empty text shows nothing.
  void Show(const QString& text);
  QSize sizeHint() const override { return {260, 260}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<std::vector<bool>> dark_;  // by row
};

}  // namespace corvanel
