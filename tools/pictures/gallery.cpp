#include "tools/pictures/gallery.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <array>
#include <vector>

#include "session/captions.h"

namespace corvanel {
namespace {

constexpr std::array<QSize, 5> kSizes = {QSize(1024, 768), QSize(1280, 720), QSize(1920, 1080),
                                         QSize(3840, 2160), QSize(1080, 1920)};
constexpr int kThumbHeight = 180;
constexpr int kGap = 8;

struct State {
  const char* name;
  ClockFace face;
};

ClockFace Face(Phase phase, Element style, const char* countdown, const std::string& caption) {
  ClockFace face;
  face.phase = phase;
  face.countdownStyle = style;
  face.countdown = countdown;
  face.caption = caption;
  face.finish = "Finish at 22:31";
  if (phase == Phase::Round) face.breakLine = "Break:20:53 End:21:08";
  return face;
}

std::vector<State> States(const SessionSettings& settings) {
  const std::string fourth = RoundCaption(4, settings.nRounds);
  std::vector<State> states = {
      {"round", Face(Phase::Round, Element::TimeRemaining, "12:47", fourth)},
      {"early warning", Face(Phase::Round, Element::EarlyWarning, "6:58", fourth)},
      {"last warning", Face(Phase::Round, Element::LastWarning, "2:59", fourth)},
      {"move", Face(Phase::Move, Element::TimeUp, "0:46", fourth)},
      {"last move", Face(Phase::Move, Element::TimeUp, "0:46", fourth)},
      {"break", Face(Phase::Break, Element::TimeRemaining, "14:20", std::string(kBreakCaption))},
      {"end of break",
       Face(Phase::Break, Element::LastWarning, "1:30", std::string(kBreakCaption))},
      {"paused", Face(Phase::Round, Element::TimeRemaining, "12:47", fourth)},
      {"ended", Face(Phase::Ended, Element::TimeUp, "0:00", "Final Round of 12")},
  };
  states[3].face.message = "MOVE FOR ROUND 5";
  states[4].face.message = MoveMessage(settings, settings.nRounds - 1);
  states[7].face.paused = true;
  return states;
}

QImage Picture(DisplayWindow& window, const QSize& size, const ClockFace& face) {
  window.resize(size);
  window.ShowFace(face);
  window.Rearrange();
  return window.grab().toImage();
}

void Shape(Session& session) {
  SessionSettings& s = session.settings;
  s.nRounds = 8;
  s.MinPerRound = 20;
  s.Skip = "7";
  s.Arrow = "7";
  s.BreakAfterRound = 4;
  s.Header = "Friday Pairs";
  s.ExtraMonitor = true;
}

}  // namespace

bool RenderGallery(Desktop& desktop, const QString& folder) {
  QDir().mkpath(folder);
  Shape(desktop.TheSession());
  const std::vector<State> states = States(desktop.TheSession().settings);
  const std::array<std::pair<const char*, DisplayWindow*>, 2> windows = {
      std::pair<const char*, DisplayWindow*>("room", &desktop.Display()),
      std::pair<const char*, DisplayWindow*>("twin", &desktop.TwinWindow())};
  int rowWidth = kGap;
  for (const QSize& size : kSizes) rowWidth += kThumbHeight * size.width() / size.height() + kGap;
  QImage sheet(2 * rowWidth, static_cast<int>(states.size()) * (kThumbHeight + kGap) + kGap,
               QImage::Format_RGB32);
  sheet.fill(Qt::white);
  QPainter painter(&sheet);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  bool written = true;
  int x = kGap;
  for (const auto& [name, window] : windows) {
    window->ShowTimeOfDay("20:51");
    window->show();
    for (const QSize& size : kSizes) {
      const int width = kThumbHeight * size.width() / size.height();
      int y = kGap;
      for (const State& state : states) {
        const QImage picture = Picture(*window, size, state.face);
        written &= picture.save(QString("%1/%2 %3x%4 %5.png")
                                    .arg(folder, name)
                                    .arg(size.width())
                                    .arg(size.height())
                                    .arg(state.name));
        painter.drawImage(QRect(x, y, width, kThumbHeight),
                          picture.scaled(2 * width, 2 * kThumbHeight, Qt::IgnoreAspectRatio,
                                         Qt::SmoothTransformation));
        y += kThumbHeight + kGap;
      }
      x += width + kGap;
    }
    x += kGap;
    window->hide();
  }
  painter.end();
  return sheet.save(folder + "/contact-sheet.png") && written;
}

}  // namespace corvanel
