#pragma once

#include <gtest/gtest.h>

#include <QDialog>
#include <QPushButton>
#include <QTest>

namespace corvanel {

/// A control of a dialog by its name.
template <class Widget>
Widget* Find(QDialog& dialog, const char* name) {
  auto* widget = dialog.findChild<Widget*>(name);
  EXPECT_NE(widget, nullptr) << name;
  return widget;
}

inline void Click(QDialog& dialog, const char* button) {
  QTest::mouseClick(Find<QPushButton>(dialog, button), Qt::LeftButton);
}

}  // namespace corvanel
