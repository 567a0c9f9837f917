#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvanel {

/// The button a person chose, by the runtime's numbers.
enum class Answer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

/// Message boxes. All stand in front of every window and are modal, but the clock goes on ticking
/// behind them.
class Prompts {
 public:
  virtual ~Prompts() = default;
  virtual void Message(const std::string& text) = 0;
  /// Enter gives No, the harmless answer.
  virtual Answer AskYesNo(const std::string& question) = 0;
  /// The same where Yes loses nothing: Enter gives Yes.
  virtual Answer OfferYesNo(const std::string& question) = 0;
  virtual Answer AskYesNoCancel(const std::string& question) = 0;
  /// A question with answers of its own; Enter gives the first. Returns the index of the one
  /// chosen, nothing when the box was closed without an answer.
  virtual std::optional<size_t> Choose(const std::string& question,
                                       const std::vector<std::string>& answers) = 0;
  /// The question of the error report, Yes or No.
  virtual Answer AskToContinue(const std::string& question) = 0;

  /// File choosers; nothing when the director cancels. Filters read "Name (*.txt)|*.txt".
  virtual std::optional<std::string> ChooseFileToSave(const std::string& name,
                                                      const std::string& filter) = 0;
  virtual std::optional<std::string> ChooseFileToOpen(const std::string& title,
                                                      const std::string& folder,
                                                      const std::string& filter) = 0;
};

}  // namespace corvanel
