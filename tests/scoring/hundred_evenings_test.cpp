// A hundred evenings made up by chance, with what truly happened known.

#include <gtest/gtest.h>

#include "tests/support/chance_evening.h"

namespace corvanel {
namespace {

TEST(HundredEveningsTest, NoRoundEndsWithATablePlayingAndNoneIsHeldWithoutOne) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    ChanceEvening evening(seed);
    evening.Play();
    if (testing::Test::HasFailure()) break;
  }
}

}  // namespace
}  // namespace corvanel
