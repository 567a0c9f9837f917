#include "system/stay_awake.h"

#include <optional>

#include "system/windows/system_call.h"

namespace corvanel {

/// The wish, which the system grants the thread that has it.
class StayAwake::Holder {
 public:
  explicit Holder(StayAwake& told) : told_(told) {}

  void Want(bool wanted) {
    if (wanted_ == wanted) return;
    wanted_ = wanted;
    const EXECUTION_STATE state =
        ES_CONTINUOUS | (wanted ? ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED : 0);
    const bool granted = SetThreadExecutionState(state) != 0;
    emit told_.Unprotected(wanted && !granted);
  }

 private:
  StayAwake& told_;
  std::optional<bool> wanted_;
};

StayAwake::StayAwake() : holder_(std::make_unique<Holder>(*this)) {}

/// The wish goes with its thread.
StayAwake::~StayAwake() = default;

void StayAwake::ShowFace(const ClockFace& face) {
  holder_->Want(Runs(face.phase));
}

}  // namespace corvanel
