#include "display/window/display_picture.h"

#include "display/state_words.h"
#include "display/window/countdown_panel.h"
#include "display/window/progress_frame.h"
#include "display/window/text_measure.h"
#include "display/window/text_row.h"
#include "session/captions.h"
#include "session/contrast.h"

namespace corvanel {

DisplayPicture::DisplayPicture(const Session& session, DisplayKind kind, QWidget* parent)
    : QWidget(parent),
      session_(session),
      kind_(kind),
      lblHeader_(new TextRow("lblHeader", this)),
      lblNow_(new TextRow("lblNow", this)),
      lblMin_(new CountdownPanel("lblMin", this)),
      lblInfo_(new TextRow("lblInfo", this)),
      moveLine_(kind == DisplayKind::Room ? new TextRow("lblMess", this) : lblInfo_),
      lblState_(new TextRow("lblState", this)),
      lblEnd_(new TextRow("lblEnd", this)),
      lblBridgemate_(new TextRow("lblBridgemate", this)),
      fraProgress_(new ProgressFrame(this)) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAutoFillBackground(true);
}

QString DisplayPicture::TableTipAt(const QPoint& point) const {
  return fraProgress_->isVisible() ? fraProgress_->TipAt(point - fraProgress_->pos()) : QString();
}

Colour DisplayPicture::Background() const {
  return session_.elements[static_cast<size_t>(Element::ScreenBackground)].Backcolour;
}

LayoutInput DisplayPicture::Input() const {
  const Options& options = session_.options;
  const UnitsShown units = Units();
  LayoutInput input;
  input.width = width();
  input.height = height();
  const double tablesWidth = input.width - 2 * MarginOf(input.width, input.height);
  input.tables = fraProgress_->TablesHeightIn(tablesWidth, input.height);
  input.moving = face_.phase == Phase::Move;
  input.texts = WidestTextsOf(session_, face_.secondsLeft);
  input.texts.large = StateWordsOf(face_, units.waiting, options.Form()).large;
  if (face_.phase == Phase::Move) input.texts.caption = face_.message;
  if (face_.phase == Phase::Break) input.texts.caption = face_.caption;
  if (face_.phase == Phase::Ended) input.texts.caption.clear();
  input.show = options.Show;
  // In the widest form that they can take, so that nothing jumps while numbers change.
  if (!units.line.empty()) {
    input.texts.unit =
        "Last board not started at tables 28 28 28 · Tables 28 28 28 28 still playing";
  } else if (!units.info.empty()) {
    input.texts.unit = options.TableTopUnit + ": 88 of 88 tables finished";
  }
  return input;
}

UnitsShown DisplayPicture::Units() const {
  return UnitsShownOn(kind_ == DisplayKind::Twin, session_.options, face_.paused, tables_);
}

void DisplayPicture::FillProgress() {
  const UnitsShown units = Units();
  fraProgress_->Show(units.line, units.tables);
  lblBridgemate_->SetText(units.info);
}

void DisplayPicture::ShowTables(const ProgressFace& tables) {
  tables_ = tables;
  if (!isVisible()) return;
  FillProgress();
  if (Input() != placed_) {
    Rearrange();
  } else {
    PlaceProgress();
  }
}

void DisplayPicture::ShowFace(const ClockFace& face) {
  const bool other = face.paused != face_.paused || face.phase != face_.phase;
  face_ = face;
  if (!isVisible()) return;
  if (other) FillProgress();
  if (Input() != placed_) PlaceElements();
  ShowTexts();
}

void DisplayPicture::ShowTimeOfDay(const std::string& time) {
  lblNow_->SetText(time);
}

QRect DisplayPicture::CountdownOnScreen() const {
  return lblMin_->DigitsPlace().translated(lblMin_->mapToGlobal(QPoint(0, 0)));
}

void DisplayPicture::Rearrange() {
  FillProgress();
  PlaceElements();
  ShowTexts();
}

void DisplayPicture::PlaceElements() {
  placed_ = Input();
  const ElementStyles& styles = session_.elements;
  layout_ = LayOut(placed_, styles, QtTextMeasure());
  const auto style = [&](Element element) { return styles[static_cast<size_t>(element)]; };
  QPalette colours = palette();
  colours.setColor(QPalette::Window, ColourOf(Background()));
  setPalette(colours);
  lblHeader_->SetPlace(layout_.header, style(Element::Title), Background());
  lblNow_->SetPlace(layout_.now, style(Element::CurrentTime), Background());
  lblMin_->SetPlace(layout_);
  lblMin_->setVisible(placed_.show[3]);
  lblState_->SetPlace(layout_.large, style(Element::RoundInformation), Background());
  TextRow* line = placed_.moving ? moveLine_ : lblInfo_;
  for (TextRow* row : {lblInfo_, moveLine_}) {
    row->SetPlace(row == line ? layout_.caption : TextPlace{}, style(Element::RoundInformation),
                  Background());
  }
  lblEnd_->SetPlace(layout_.finish, style(Element::FinishTime), Background());
  PlaceProgress();
}

/// The one line about the tables, and their grid.
void DisplayPicture::PlaceProgress() {
  const ElementStyle& style = session_.elements[static_cast<size_t>(Element::UnitInfo)];
  lblBridgemate_->SetPlace(Units().info.empty() ? TextPlace{} : layout_.unit, style, Background());
  fraProgress_->SetPlace(layout_, style, Background(), placed_.height);
}

void DisplayPicture::ShowTexts() {
  lblHeader_->SetText(ShownTitle(session_.settings.Header));
  const StateWords words = StateWordsOf(face_, Units().waiting, session_.options.Form());
  ElementStyle countdown = session_.elements[static_cast<size_t>(face_.countdownStyle)];
  if (face_.paused) countdown = Receded(countdown, Background());
  lblMin_->SetStyle(countdown, Background());
  lblMin_->SetTexts(face_.countdown, words.tag);
  std::string state = face_.phase == Phase::Move ? face_.message : face_.caption;
  for (const std::string& word : {words.tag, words.large}) {
    if (!word.empty()) state += ", " + word;
  }
  if (lblMin_->SetSpoken(state)) emit Announced(lblMin_->accessibleName());
  lblState_->SetText(words.large);
  lblInfo_->SetText(face_.caption);
  if (face_.phase == Phase::Move) moveLine_->SetText(face_.message);
  lblEnd_->SetText(FinishAndBreak(face_.finish, face_.breakLine));
}

}  // namespace corvanel
