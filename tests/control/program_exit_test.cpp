#include "control/program_exit.h"

#include <gtest/gtest.h>

#include "tests/support/favourites_bench.h"

namespace corvanel {
namespace {

TEST(ProgramExitTest, LeavingFromADisplayAsksFirst) {
  struct Row {
    const char* name;
    bool autoShutdown;
    std::deque<Answer> answers;
    const char* done;
  };
  const Row rows[] = {
      {"stays", false, {Answer::No}, ""},
      {"leaves", false, {Answer::Yes}, "geometry end "},
      {"cancels the shutdown question", true, {Answer::Yes, Answer::Cancel}, ""},
      {"leaves the computer on", true, {Answer::Yes, Answer::No}, "geometry end "},
      {"shuts down", true, {Answer::Yes, Answer::Yes}, "geometry shutdown end "},
  };
  for (const Row& row : rows) {
    FavouritesBench base;
    base.prompts.answers = row.answers;
    base.session.options.AutoShutdown = row.autoShutdown;
    EXPECT_EQ(base.exit.FromDisplay(), *row.done != 0) << row.name;
    EXPECT_EQ(base.view.done, row.done) << row.name;
  }
}

TEST(ProgramExitTest, LeavingTheControlWindowAsksOnlyInASession) {
  FavouritesBench base;
  base.exit.FromControlWindow(false);
  EXPECT_EQ(base.view.done, "end ");
  EXPECT_TRUE(base.prompts.texts.empty());
  base.view.done.clear();
  base.bench.clock.Start(1);
  base.prompts.answers = {Answer::No, Answer::Yes};
  base.exit.FromControlWindow(true);
  EXPECT_EQ(base.view.done, "");
  EXPECT_EQ(base.prompts.texts, std::vector<std::string>{"Do you want to exit the program?"});
  base.exit.FromControlWindow(true);
  EXPECT_EQ(base.view.done, "geometry end ");
}

}  // namespace
}  // namespace corvanel
