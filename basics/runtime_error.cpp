#include "basics/runtime_error.h"

#include <exception>
#include <new>

namespace corvanel {

bool HandlerSteps::operator()(const std::function<void()>& step) {
  ++line_;
  try {
    step();
    return true;
  } catch (const RuntimeError& error) {
    trap_.ReportError(place_, error, line_);
  } catch (const std::bad_alloc&) {
    trap_.ReportError(place_, RuntimeError(7, "Out of memory"), line_);
  } catch (const std::exception& error) {
    trap_.ReportError(place_, RuntimeError(51, std::string("Internal error: ") + error.what()),
                      line_);
  }
  return false;
}

}  // namespace corvanel
