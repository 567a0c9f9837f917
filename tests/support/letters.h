#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <map>
#include <set>

namespace corvanel {

/// The letter after '&' in a caption; null when there is none. "&&" is no letter.
inline QChar LetterOf(QString caption) {
  caption.remove("&&");
  const qsizetype at = caption.indexOf('&');
  return at < 0 ? QChar() : caption[at + 1].toLower();
}

/// Every control of a window that the keys reach has a letter, or a key of its own, and none is
/// given twice; so have the menus, and the entries of each. Enter and Esc lead to OK, Cancel and
/// Close. `without`: the names of those that are reached from another beside them.
inline void ExpectLetters(const QWidget& window, const std::set<QString>& without = {}) {
  std::map<QChar, std::string> owners;
  const auto claim = [](auto& table, const QString& caption, const QObject* owner) {
    const QChar letter = LetterOf(caption);
    if (letter.isNull()) return;
    const std::string name = owner->objectName().toStdString();
    const auto [entry, added] = table.try_emplace(letter, name);
    EXPECT_TRUE(added) << name << " and " << entry->second << " share " << char(letter.unicode());
  };
  std::set<const QObject*> named;
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (label->buddy() == nullptr) continue;
    claim(owners, label->text(), label);
    if (!LetterOf(label->text()).isNull()) named.insert(label->buddy());
  }
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
    if (!button->isHidden()) claim(owners, button->text(), button);
    if (!LetterOf(button->text()).isNull() || !button->shortcut().isEmpty()) named.insert(button);
  }
  if (const auto* bar = window.findChild<QMenuBar*>()) {
    for (const QAction* menu : bar->actions()) {
      claim(owners, menu->text(), menu->menu());
      EXPECT_FALSE(LetterOf(menu->text()).isNull()) << menu->text().toStdString();
      std::map<QChar, std::string> entries;
      for (const QAction* entry : menu->menu()->actions()) {
        if (entry->isSeparator()) continue;
        claim(entries, entry->text(), entry);
        EXPECT_FALSE(LetterOf(entry->text()).isNull()) << entry->text().toStdString();
      }
    }
  }
  for (const QWidget* control : window.findChildren<QWidget*>()) {
    const auto* button = qobject_cast<const QAbstractButton*>(control);
    const QString caption = button == nullptr ? QString() : button->text();
    const bool byEnterOrEsc = caption == "OK" || caption == "Cancel" || caption == "Close";
    const bool reached = (control->focusPolicy() & Qt::TabFocus) && !control->isHidden() &&
                         control->objectName() != "" && !control->objectName().startsWith("qt_") &&
                         !byEnterOrEsc;
    if (reached && !without.contains(control->objectName())) {
      EXPECT_TRUE(named.contains(control)) << control->objectName().toStdString();
    }
  }
}

}  // namespace corvanel
