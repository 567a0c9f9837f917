#pragma once

namespace corvanel {

/// What is 0.5 seconds or less is as good as over.
double SecondsRemaining(double endMark, double now);

/// The countdown's step in seconds for a stored choice: the nearest of 1, 5, 10, 15, 20, 30, 60.
int CountdownStep(int timeChange);

/// What the countdown shows for the seconds left: the next full step above, so that it never says
/// less than there is; from the last step on every single second, to 0 at the very end.
double ShownSeconds(double secondsLeft, int step);

}  // namespace corvanel
