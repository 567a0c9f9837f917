#pragma once

#include <functional>
#include <string>
#include <vector>

#include "basics/runtime_error.h"
#include "session/session.h"

namespace corvanel {

/// The check boxes of the dialog, by their index.
constexpr size_t kShowBoxes = 8;

/// The logic of the display options. Changes take effect at once; Cancel takes all of them back,
/// Close keeps and stores them.
class DisplayOptions {
 public:
  struct Parts {
    Session& session;
    std::function<void()> save;          // fonts, colours and options into the store
    std::function<void()> rearrange;     // lays the displays out anew (the twin only while in use)
    std::function<void()> rewriteTimes;  // in the control window and on the displays
    ErrorTrap& errors;
  };
  explicit DisplayOptions(const Parts& parts);

  /// The ten names of the list, the last one with the name of the scoring unit in use.
  std::vector<std::string> Names() const;
  /// The text that shows what an element looks like.
  static std::string Sample(Element element);
  /// The element's style as the sample shows it: the countdown's kinds always at 48 points.
  ElementStyle SampleStyle(Element element) const;
  /// The note on what a chosen size means for the element.
  static std::string SizeNote(Element element);
  /// A word of warning when the element's colours are hard to tell apart, else empty.
  std::string ContrastNote(Element element) const;
  /// The caption of check box `box`, and whether it is ticked.
  std::string ShowCaption(size_t box) const;
  bool Shown(size_t box) const;
  std::string ControlCaption() const;

  void SetStyle(Element element, const ElementStyle& style);
  void SetShown(size_t box, bool shown);
  void SetOnlyOnControl(bool only);
  void SetTimeForm(TimeForm form);
  /// Seconds; one of kCountdownSteps.
  void SetTimeChange(int seconds);
  /// The fonts and colours that the program ships with.
  void cmdRestore_Click();
  void cmdClose_Click();
  void cmdCancel_Click();

  const Options& Live() const { return session_.options; }
  const ElementStyle& StyleOf(Element element) const {
    return session_.elements[static_cast<size_t>(element)];
  }

 private:
  int16_t& Flag(size_t box) const;
  void Apply(const std::function<void()>& change);

  Parts parts_;
  Session& session_ = parts_.session;
  const Options optionsBefore_;
  const ElementStyles elementsBefore_;
};

}  // namespace corvanel
