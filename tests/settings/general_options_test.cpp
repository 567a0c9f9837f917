#include "settings/general_options.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"

namespace corvanel {
namespace {

TEST(GeneralOptionsTest, TakesOverAndStoresTheBoxes) {
  FakeStore store;
  Session session;
  FakeErrors errors;
  SettingsTable table(store, session, errors);
  int applied = 0;
  GeneralOptions options(session, table, errors, [&] { ++applied; });
  session.options.TableTopUnit = "BridgeTab";
  EXPECT_EQ(options.UnitCaption(), "BridgeTab Options");
  EXPECT_EQ(options.Boxes(), (GeneralBoxes{0, 0, 1, 0}));
  options.cmdOK_Click({1, 1, 0, 1});
  EXPECT_EQ(options.Boxes(), (GeneralBoxes{1, 1, 0, 1}));
  EXPECT_EQ(store.GetAllSettings("Timer"), (KeysAndValues{{"AutoLaunch", "True"},
                                                          {"AutoShutdown", "1"},
                                                          {"AutoUpdate", "False"},
                                                          {"OnTop", "True"}}));
  store.full = true;
  options.cmdOK_Click({0, 0, 0, 0});
  EXPECT_EQ(errors.reports, std::vector<std::string>{"61 frmOptions 2"});
  EXPECT_EQ(applied, 2);
}

}  // namespace
}  // namespace corvanel
