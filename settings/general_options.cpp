#include "settings/general_options.h"

namespace corvanel {

GeneralBoxes GeneralOptions::Boxes() const {
  const Options& options = session_.options;
  return {options.AutoLaunch ? 1 : 0, options.AutoShutdown != 0 ? 1 : 0, options.AutoUpdate ? 1 : 0,
          options.OnTop ? 1 : 0};
}

void GeneralOptions::cmdOK_Click(const GeneralBoxes& boxes) {
  HandlerSteps step(errors_, "frmOptions");
  step([&] {
    Options& options = session_.options;
    options.AutoLaunch = boxes.chkAutoStart != 0;
    // Meant so: this one keeps the box's own value, the others become switches.
    options.AutoShutdown = static_cast<int16_t>(boxes.chkAutoShutdown);
    options.AutoUpdate = boxes.chkAutoUpdate > 0;
    options.OnTop = boxes.chkOnTop != 0;
  });
  step([&] { table_.SaveOptions({"AutoLaunch", "AutoShutdown", "AutoUpdate", "OnTop"}); });
  step(applyOnTop_);
}

}  // namespace corvanel
