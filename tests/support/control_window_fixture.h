#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/favourites_bench.h"

namespace corvanel {

/// The control window's logic on fakes: eight rounds of twenty minutes from 19:30.
class ControlWindowTest : public testing::Test {
 protected:
  ControlWindowTest() {
    s.nRounds = 8;
    s.MinPerRound = 20;
    s.MinBetweenRounds = 1;
    window.Leave(Box::StartTime, "19:30");
    window.Display();
  }
  /// Types a whole text and leaves the box.
  bool Enter(Box box, const std::string& text) {
    window.Change(box, text);
    return window.Leave(box, text);
  }
  std::string Value(Box box) { return view.texts[box]; }

  FavouritesBench base;
  ClockBench& bench = base.bench;
  Session& session = base.session;
  SessionSettings& s = session.settings;
  FakePrompts& prompts = base.prompts;
  FakeControlWindow& view = base.view;
  FakeStore& store = base.store;
  ControlWindow& window = base.control;
};

}  // namespace corvanel
