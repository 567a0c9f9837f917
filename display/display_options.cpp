#include "display/display_options.h"

#include <array>

#include "display/state_words.h"
#include "session/captions.h"
#include "session/contrast.h"

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

/// The options that are times of day or the countdown: written anew rather than laid out.
bool IsOfTimes(const std::string& key) {
  return key == "TimeAs24hour" || key == "TimeChange";
}

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

std::string DisplayOptions::RoomWord(Element element) const {
  return StateWordsOf(SampleFace(element), "", Live().Form()).tag;
}

ClockFace DisplayOptions::SampleFace(Element element) const {
  constexpr int kRound = 2;
  const SessionSettings& settings = session_.settings;
  const Schedule schedule{ClockTime::At(22, 31), ClockTime::At(20, 53), ClockTime::At(21, 8)};
  const bool move = element == Element::TimeUp;
  const bool ofCountdown =
      move || element == Element::LastWarning || element == Element::EarlyWarning;
  ClockFace face;
  face.phase = move ? Phase::Move : Phase::Round;
  face.countdownStyle = ofCountdown ? element : Element::TimeRemaining;
  face.countdown = Sample(face.countdownStyle);
  face.caption = RoundCaption(kRound, settings.nRounds);
  if (move) face.message = MoveMessage(settings, kRound - 1);
  face.schedule = schedule;
  face.finish = FinishLine(schedule.finish, Live().Form());
  face.breakLine = BreakLine(schedule, Live().Form());
  return face;
}

ProgressFace DisplayOptions::SampleTables(Element element) {
  ProgressFace face;
  if (element != Element::UnitInfo) return face;
  face.info = face.lines.emplace_back(Sample(element));
  SectionCells cells;
  for (int table = 1; table <= 8; ++table) {
    const bool plays = table % 3 == 2;
    cells.cells.push_back({std::to_string(table),
                           plays ? TableState::Playing : TableState::Finished, plays ? "2/3" : "",
                           ""});
  }
  face.sections = {cells};
  return face;
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

void DisplayOptions::Apply(const std::function<void()>& change) {
  HandlerSteps step(parts_.errors, kPlace);
  step(change);
  step([&] { parts_.rearrange(); });
}

void DisplayOptions::SetStyle(Element element, const ElementStyle& style) {
  Apply([&] { session_.elements[static_cast<size_t>(element)] = style; });
}

void DisplayOptions::Set(const std::string& key, const std::string& text) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] {
    ReadOption(session_.options, key, text);
    changed_.insert(key);
  });
  step(IsOfTimes(key) ? parts_.rewriteTimes : parts_.rearrange);
}

void DisplayOptions::cmdRestore_Click() {
  Apply([&] { session_.elements = DefaultElementStyles(); });
}

void DisplayOptions::cmdClose_Click(std::vector<std::string> keys) {
  HandlerSteps step(parts_.errors, kPlace);
  keys.insert(keys.end(), {"LogFile", "TimeAs24hour", "TimeChange"});
  step([&] { parts_.save(keys); });
  step(parts_.rearrange);
}

void DisplayOptions::cmdCancel_Click() {
  Apply([&] {
    session_.elements = elementsBefore_;
    for (const std::string& key : changed_) {
      ReadOption(session_.options, key, OptionText(optionsBefore_, key));
    }
  });
  Guarded(parts_.errors, kPlace, parts_.rewriteTimes);
}

}  // namespace corvanel
