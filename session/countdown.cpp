#include "session/countdown.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "session/session.h"

namespace corvanel {

double SecondsRemaining(double endMark, double now) {
  const double left = endMark - now;
  return left <= 0.5 ? 0 : left;
}

int CountdownStep(int timeChange) {
  return *std::min_element(kCountdownSteps.begin(), kCountdownSteps.end(), [&](int a, int b) {
    return std::abs(a - timeChange) < std::abs(b - timeChange);
  });
}

double ShownSeconds(double secondsLeft, int step) {
  const double whole = std::floor(secondsLeft + 0.5);
  return whole <= step ? whole : std::ceil(whole / step) * step;
}

}  // namespace corvanel
