#include <benchmark/benchmark.h>

#include <QApplication>

#include "display/window/text_measure.h"

namespace corvanel {
namespace {

/// A full layout with real fonts, the long texts of a congress included.
void FullLayout(benchmark::State& state) {
  Session session;
  session.settings.nRounds = 22;
  session.settings.Skip = "21";
  session.settings.Arrow = "21";
  session.settings.Header = "The Grand Autumn Congress of All Clubs, Second Session";
  LayoutInput input;
  input.width = static_cast<double>(state.range(0));
  input.height = static_cast<double>(state.range(1));
  input.moving = state.range(2) != 0;
  const QtTextMeasure measure;
  while (state.KeepRunning()) {
    input.texts = WidestTextsOf(session, 0);
    benchmark::DoNotOptimize(LayOut(input, session.elements, measure));
  }
}
BENCHMARK(FullLayout)
    ->Args({1920, 1080, 0})
    ->Args({1920, 1080, 1})
    ->Args({3840, 2160, 0})
    ->Args({3840, 2160, 1})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace corvanel

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
