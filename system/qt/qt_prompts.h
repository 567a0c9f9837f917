#pragma once

#include <QMessageBox>

#include "session/prompts.h"

namespace corvanel {

/// Message boxes over whatever window is active.
class QtPrompts : public Prompts {
 public:
  void Message(const std::string& text) override;
  Answer AskYesNo(const std::string& question) override;
  Answer OfferYesNo(const std::string& question) override;
  Answer AskYesNoCancel(const std::string& question) override;
  std::optional<size_t> Choose(const std::string& question,
                               const std::vector<std::string>& answers) override;
  Answer AskToContinue(const std::string& question) override;
  std::optional<std::string> ChooseFileToSave(const std::string& name,
                                              const std::string& filter) override;
  std::optional<std::string> ChooseFileToOpen(const std::string& title, const std::string& folder,
                                              const std::string& filter) override;

 private:
  /// `onEnter` is the harmless answer: an Enter that was meant for something else gives it.
  static Answer Ask(const std::string& text, QMessageBox::Icon icon,
                    QMessageBox::StandardButtons buttons, QMessageBox::StandardButton onEnter);
};

}  // namespace corvanel
