#include <benchmark/benchmark.h>

#include <filesystem>

#include "settings/settings_table.h"
#include "system/json_store.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

/// One second of a running round: tick, schedule, face.
void Tick(benchmark::State& state) {
  ClockBench bench;
  bench.session.settings.MinPerRound = 600;
  bench.clock.Start(1);
  while (state.KeepRunning()) {
    bench.clock.Tick();
    bench.countdowns.clear();
  }
}
BENCHMARK(Tick);

/// The same second as a bare count-down would do it: a difference and its text.
void BareCountdown(benchmark::State& state) {
  VirtualTime time(ClockTime::At(19, 30));
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(MinutesAndSeconds(SecondsRemaining(80000, time.Uptime())));
  }
}
BENCHMARK(BareCountdown);

/// A whole evening of twelve rounds with its break.
void Evening(benchmark::State& state) {
  while (state.KeepRunning()) {
    ClockBench bench;
    bench.session.settings.optBreak = true;
    bench.clock.Start(1);
    bench.RunToEnd();
    benchmark::DoNotOptimize(bench.log);
  }
}
BENCHMARK(Evening)->Unit(benchmark::kMillisecond);

/// A store with all twenty favourites and all ten elements.
class FullStore : public benchmark::Fixture {
 public:
  void SetUp(benchmark::State& /*state*/) override {
    file = std::filesystem::temp_directory_path() / "corvanel-bench.json";
    DiskWriter writer;
    JsonStore store(file, writer);
    Session session;
    FakeErrors errors;
    SettingsTable table(store, session, errors);
    for (int entry = 0; entry <= kFavourites; ++entry) {
      SettingsSet set;
      for (const auto& key : SetKeys()) {
        store.SaveSetting(SectionOfSet(entry), key.key, key.text(set));
      }
      store.SaveSetting(SectionOfSet(entry), "Name", "Favourite " + std::to_string(entry));
    }
    for (int element = 0; element < kElements; ++element) {
      ElementStyle style;
      for (const auto& key : ElementKeys()) {
        store.SaveSetting(SectionOfElement(element), key.key, key.text(style));
      }
    }
    store.Flush();
    writer.Wait(std::chrono::seconds(20));
  }
  void TearDown(benchmark::State& /*state*/) override { std::filesystem::remove(file); }
  std::filesystem::path file;
};

BENCHMARK_F(FullStore, Load)(benchmark::State& state) {
  while (state.KeepRunning()) {
    DiskWriter writer;
    JsonStore store(file, writer);
    Session session;
    FakeErrors errors;
    SettingsTable table(store, session, errors);
    table.GetDefaults();
    benchmark::DoNotOptimize(session);
  }
}

/// Writing lasts until the disk has it.
BENCHMARK_F(FullStore, Save)(benchmark::State& state) {
  DiskWriter writer;
  JsonStore store(file, writer);
  Session session;
  FakeErrors errors;
  SettingsTable table(store, session, errors);
  table.GetDefaults();
  while (state.KeepRunning()) {
    table.SaveDefaults();
    writer.Wait(std::chrono::seconds(20));
  }
}

}  // namespace
}  // namespace corvanel
