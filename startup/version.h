#pragma once

#include <string>

namespace corvanel {

/// A release of the program.
struct Version {
  int major = 0;
  int minor = 0;
  int revision = 0;

  /// For comparing: 1.4.02 is 10402.
  int Number() const { return major * 10000 + minor * 100 + revision; }
  /// "1.4.02".
  std::string Text() const;
};

/// The version of this build.
Version ThisVersion();

}  // namespace corvanel
