#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

class QWidget;

namespace corvanel {

/// The controls of a dialog that each stand for one setting: its check boxes and text boxes with
/// the property "setting", which names the setting's key. A new setting needs such a control and
/// no code here.
class OptionRows {
 public:
  using TextOf = std::function<std::string(const std::string& key)>;

  explicit OptionRows(const QWidget& dialog);

  /// Shows each setting as the store would write it.
  void Show(const TextOf& textOf) const;
  /// What the controls hold, by key, as the store would write it.
  std::vector<std::pair<std::string, std::string>> Texts() const;
  std::vector<std::string> Keys() const;
  /// Tells each click on a check box at once.
  void OnClick(const std::function<void(const std::string& key, const std::string& text)>& answer);
  /// Puts the unit's name into the captions that leave room for it ("%1").
  void NameUnit(const std::string& unit) const;
  /// The control of a key; null when there is none.
  QWidget* Find(const std::string& key) const;

 private:
  std::vector<QWidget*> rows_;
};

}  // namespace corvanel
