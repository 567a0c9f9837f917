#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "basics/runtime_error.h"
#include "session/clock_face.h"
#include "session/progress_face.h"
#include "settings/setting_keys.h"

namespace corvanel {

/// The logic of the display options. Changes take effect at once; Cancel takes all of them back,
/// Close keeps and stores them.
class DisplayOptions {
 public:
  struct Parts {
    Session& session;
    /// Writes fonts, colours and these options.
    std::function<void(const std::vector<std::string>& keys)> save;
    std::function<void()> rearrange;     // lays the displays out anew (the twin only while in use)
    std::function<void()> rewriteTimes;  // in the control window and on the displays
    ErrorTrap& errors;
  };
  explicit DisplayOptions(const Parts& parts);

  /// The ten names of the list, the last one with the name of the scoring unit in use.
  std::vector<std::string> Names() const;
  /// The word with which the room's countdown names the entry: "LAST WARNING". Empty for one
  /// without such a word.
  std::string RoomWord(Element element) const;
  /// A state of the evening in which the entry can be seen on the room display.
  ClockFace SampleFace(Element element) const;
  /// The tables in it: some for the units' information, else none.
  static ProgressFace SampleTables(Element element);
  /// The text that shows what an element looks like.
  static std::string Sample(Element element);
  /// The element's style as the sample shows it: the countdown's kinds always at 48 points.
  ElementStyle SampleStyle(Element element) const;
  /// The note on what a chosen size means for the element.
  static std::string SizeNote(Element element);
  /// A word of warning when the element's colours are hard to tell apart, else empty.
  std::string ContrastNote(Element element) const;
  void SetStyle(Element element, const ElementStyle& style);
  /// Changes an option by its key, as its text.
  void Set(const std::string& key, const std::string& text);
  /// The fonts and colours that the program ships with.
  void cmdRestore_Click();
  /// Stores everything; `keys`: of the options that the dialog shows.
  void cmdClose_Click(std::vector<std::string> keys);
  void cmdCancel_Click();

  const Session& TheSession() const { return session_; }
  const Options& Live() const { return session_.options; }
  const ElementStyle& StyleOf(Element element) const {
    return session_.elements[static_cast<size_t>(element)];
  }

 private:
  void Apply(const std::function<void()>& change);

  Parts parts_;
  Session& session_ = parts_.session;
  const Options optionsBefore_;
  const ElementStyles elementsBefore_;
  std::set<std::string> changed_;  // options
};

}  // namespace corvanel
