#pragma once

#include <string>
#include <vector>

#include "session/progress_face.h"
#include "session/session.h"

namespace corvanel {

/// What a display shows of the table-top units, as far as the options want it.
struct UnitsShown {
  std::string waiting;  // whom the clock is held for: "WAITING FOR TABLES 5 7"
  std::string line;     // who still plays, unless the state itself says it
  std::string info;     // what is known of the units, where no such line stands
  std::vector<SectionCells> tables;
};

/// `directors`: the display is the director's own; the others can be kept from seeing any of it.
UnitsShown UnitsShownOn(bool directors, const Options& options, bool paused,
                        const ProgressFace& progress);

}  // namespace corvanel
