#include "widgets/option_rows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <algorithm>

namespace corvanel {
namespace {

constexpr const char* kSetting = "setting";

std::string KeyOf(const QWidget& row) {
  return row.property(kSetting).toString().toStdString();
}

/// A switch is on for every form that the store has for it.
bool IsOn(const std::string& text) {
  return text != "False" && text != "0";
}

}  // namespace

OptionRows::OptionRows(const QWidget& dialog) {
  for (QWidget* child : dialog.findChildren<QWidget*>()) {
    if (child->property(kSetting).isValid()) rows_.push_back(child);
  }
}

void OptionRows::Show(const TextOf& textOf) const {
  for (QWidget* row : rows_) {
    const std::string text = textOf(KeyOf(*row));
    if (auto* check = qobject_cast<QCheckBox*>(row)) check->setChecked(IsOn(text));
    if (auto* box = qobject_cast<QLineEdit*>(row)) box->setText(QString::fromStdString(text));
    if (auto* list = qobject_cast<QComboBox*>(row)) {
      // What is not offered any more leaves the first.
      list->setCurrentIndex(std::max(list->findText(QString::fromStdString(text)), 0));
    }
  }
}

std::vector<std::pair<std::string, std::string>> OptionRows::Texts() const {
  std::vector<std::pair<std::string, std::string>> texts;
  for (const QWidget* row : rows_) {
    const auto* check = qobject_cast<const QCheckBox*>(row);
    const auto* box = qobject_cast<const QLineEdit*>(row);
    const auto* list = qobject_cast<const QComboBox*>(row);
    const std::string text = check != nullptr  ? (check->isChecked() ? "True" : "False")
                             : box != nullptr  ? box->text().toStdString()
                             : list != nullptr ? list->currentText().toStdString()
                                               : "";
    texts.emplace_back(KeyOf(*row), text);
  }
  return texts;
}

std::vector<std::string> OptionRows::Keys() const {
  std::vector<std::string> keys;
  std::transform(rows_.begin(), rows_.end(), std::back_inserter(keys),
                 [](const QWidget* row) { return KeyOf(*row); });
  return keys;
}

void OptionRows::OnClick(
    const std::function<void(const std::string& key, const std::string& text)>& answer) {
  for (QWidget* row : rows_) {
    auto* check = qobject_cast<QCheckBox*>(row);
    if (check == nullptr) continue;
    QObject::connect(check, &QCheckBox::clicked, check,
                     [answer, key = KeyOf(*row)](bool on) { answer(key, on ? "True" : "False"); });
  }
}

void OptionRows::NameUnit(const std::string& unit) const {
  // A unit's own name may hold the character that marks a key.
  const QString name = QString::fromStdString(unit).replace('&', "&&");
  for (QWidget* row : rows_) {
    auto* check = qobject_cast<QCheckBox*>(row);
    if (check == nullptr) continue;
    QVariant caption = check->property("caption");
    if (!caption.isValid()) caption = check->text();
    check->setProperty("caption", caption);  // as the form has it
    check->setText(caption.toString().replace("%1", name));
  }
}

QWidget* OptionRows::Find(const std::string& key) const {
  const auto found = std::find_if(rows_.begin(), rows_.end(),
                                  [&](const QWidget* row) { return KeyOf(*row) == key; });
  return found == rows_.end() ? nullptr : *found;
}

}  // namespace corvanel
