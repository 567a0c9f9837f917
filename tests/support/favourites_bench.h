#pragma once

#include <string>

#include "control/favourites.h"
#include "tests/support/fake_control_window.h"
#include "tests/support/fakes.h"

namespace corvanel {

/// Favourites on a store in memory, with the control window's logic behind them.
struct FavouritesBench {
  explicit FavouritesBench(ClockTime start = ClockTime::At(19, 30), DateTime day = {},
                           const std::string& boot = "virtual")
      : bench(start, day, boot) {
    bench.broadcast.Add(evening);
    bench.broadcast.Add(control);
  }

  ClockBench bench;
  Session& session = bench.session;
  FakePrompts prompts;
  FakeControlWindow view;
  FakeStore store;
  SettingsTable table{store, session, bench.errors};
  Notices notices{bench.broadcast};
  ProgramExit exit{session, bench.clock, prompts, view};
  EveningSoFar evening{bench.time};
  ControlWindow control{{session, view, prompts, bench.errors, bench.time, bench.clock, evening,
                         notices, table, view, exit}};
  Favourites favourites{{table, bench.clock, view, control, prompts, bench.errors}};
};

}  // namespace corvanel
