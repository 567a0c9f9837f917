#include "display/display_options.h"

#include <array>

#include "display/contrast.h"

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "frmFont";
constexpr float kSamplePoints = 48;

struct ElementText {
  std::string_view sample;
  bool sizeCounts;     // the chosen size is used, or set by the layout
  bool sampleIsLarge;  // shown at 48 points whatever its size
};

constexpr std::array<ElementText, kElements> kTexts = {{
    {"19:15", true, false},
    {"Finish at", true, false},
    {"Time remaining for round", true, false},
    {"12:34", false, true},
    {"12:34", false, true},
    {"12:34", false, true},
    {"12:34", false, true},
    {"", false, true},
    {"Title", true, false},
    {"Tables in play", false, false},
}};

const ElementText& TextOf(Element element) {
  return kTexts[static_cast<size_t>(element)];
}

constexpr size_t kFirstUnitBox = 5;
constexpr std::array<std::string_view, kShowBoxes> kCaptions = {
    "Show current time",   "Show finish time", "Show round information",
    "Show time remaining", "Show title",       " info",
    " progress",           " table nos"};

}  // namespace

DisplayOptions::DisplayOptions(const Parts& parts)
    : parts_(parts),
      optionsBefore_(parts.session.options),
      elementsBefore_(parts.session.elements) {}

std::vector<std::string> DisplayOptions::Names() const {
  std::vector<std::string> names(kElementNames.begin(), kElementNames.end());
  names.back() = session_.options.TableTopUnit + names.back();
  return names;
}

std::string DisplayOptions::Sample(Element element) {
  return std::string(TextOf(element).sample);
}

ElementStyle DisplayOptions::SampleStyle(Element element) const {
  ElementStyle style = StyleOf(element);
  if (TextOf(element).sampleIsLarge) style.Size = kSamplePoints;
  return style;
}

std::string DisplayOptions::SizeNote(Element element) {
  return TextOf(element).sizeCounts
             ? "Font size might be reduced in order to fit on screen"
             : "Font can be changed, but changes to font size will be ignored";
}

std::string DisplayOptions::ContrastNote(Element element) const {
  const ElementStyle& style = StyleOf(element);
  // The background has no text of its own.
  const bool poor = element != Element::ScreenBackground &&
                    ContrastRatio(style.Forecolour, style.Backcolour) < kPoorContrast;
  return poor ? "These colours are hard to tell apart across a room" : "";
}

std::string DisplayOptions::ShowCaption(size_t box) const {
  if (box < kFirstUnitBox) return std::string(kCaptions[box]);
  return "Show " + session_.options.TableTopUnit + std::string(kCaptions[box]);
}

std::string DisplayOptions::ControlCaption() const {
  return "Show " + session_.options.TableTopUnit + " information only on control screen";
}

int16_t& DisplayOptions::Flag(size_t box) const {
  Options& options = session_.options;
  switch (box) {
    case 5:
      return options.BMShowInfo;
    case 6:
      return options.BMShowProgress;
    case 7:
      return options.BMShowTables;
    default:
      return options.Show[box];
  }
}

bool DisplayOptions::Shown(size_t box) const {
  return Flag(box) != 0;
}

void DisplayOptions::Apply(const std::function<void()>& change) {
  HandlerSteps step(parts_.errors, kPlace);
  step(change);
  step([&] { parts_.rearrange(); });
}

void DisplayOptions::SetStyle(Element element, const ElementStyle& style) {
  Apply([&] { session_.elements[static_cast<size_t>(element)] = style; });
}

void DisplayOptions::SetShown(size_t box, bool shown) {
  Apply([&] { Flag(box) = shown ? 1 : 0; });
}

void DisplayOptions::SetOnlyOnControl(bool only) {
  Apply([&] { session_.options.BMControl = only ? 1 : 0; });
}

void DisplayOptions::SetTimeForm(TimeForm form) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { session_.options.TimeAs24hour = form == TimeForm::Hours24; });
  step([&] { parts_.rewriteTimes(); });
}

void DisplayOptions::SetTimeChange(int seconds) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { session_.options.TimeChange = static_cast<int16_t>(seconds); });
  step([&] { parts_.rewriteTimes(); });
}

void DisplayOptions::cmdRestore_Click() {
  Apply([&] { session_.elements = DefaultElementStyles(); });
}

void DisplayOptions::cmdClose_Click() {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { parts_.save(); });
  step([&] { parts_.rearrange(); });
}

void DisplayOptions::cmdCancel_Click() {
  Apply([&] {
    session_.elements = elementsBefore_;
    Options& options = session_.options;
    options.Show = optionsBefore_.Show;
    options.BMShowInfo = optionsBefore_.BMShowInfo;
    options.BMShowProgress = optionsBefore_.BMShowProgress;
    options.BMShowTables = optionsBefore_.BMShowTables;
    options.BMControl = optionsBefore_.BMControl;
    options.TimeAs24hour = optionsBefore_.TimeAs24hour;
    options.TimeChange = optionsBefore_.TimeChange;
  });
  Guarded(parts_.errors, kPlace, parts_.rewriteTimes);
}

}  // namespace corvanel
