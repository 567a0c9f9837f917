#include "display/units_shown.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace corvanel {

UnitsShown UnitsShownOn(bool directors, const Options& options, bool paused,
                        const ProgressFace& progress) {
  UnitsShown shown;
  if (options.BMControl && !directors) return shown;
  if (options.BMShowTables) shown.tables = progress.sections;
  if (options.BMShowProgress) shown.waiting = progress.waiting;
  if (paused && !shown.waiting.empty()) return shown;
  if (options.BMShowProgress) shown.line = fmt::format("{}", fmt::join(progress.lines, " · "));
  if (options.BMShowInfo && shown.line.empty()) shown.info = progress.info;
  return shown;
}

}  // namespace corvanel
