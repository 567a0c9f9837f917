#pragma once

#include <string>
#include <vector>

#include "control/favourites.h"
#include "tests/support/fake_control_window.h"
#include "tests/support/fakes.h"

namespace corvanel {

/// Favourites on a store in memory, with the control window's logic behind them; keeps what their
/// controls show.
class FavouritesBench : public FavouritesView {
 public:
  explicit FavouritesBench(ClockTime start = ClockTime::At(19, 30), DateTime day = {},
                           const std::string& boot = "virtual")
      : bench(start, day, boot) {}

  void ShowFavourites(const std::vector<std::string>& names, const std::string& text) override {
    listed = names;
    chosen = text;
  }
  void ShowInUse(const std::string& name) override { inUse = name; }
  void ClearNewName() override {}

  std::vector<std::string> listed;
  std::string chosen;
  std::string inUse;
  ClockBench bench;
  Session& session = bench.session;
  FakePrompts prompts;
  FakeControlWindow view;
  FakeStore store;
  SettingsTable table{store, session, bench.errors};
  ProgramExit exit{session, prompts, view};
  ControlWindow control{
      {session, view, prompts, bench.errors, bench.time, bench.clock, table, view, exit}};
  Favourites favourites{
      {table, session, *this, control, prompts, bench.errors, bench.time, bench.clock}};
};

}  // namespace corvanel
