#include "basics/runtime_error.h"

#include <exception>
#include <new>

namespace corvanel {

void ErrorTrap::ReportCurrent(std::string_view place, int line) {
  try {
    throw;
  } catch (const RuntimeError& error) {
    ReportError(place, error, line);
  } catch (const std::bad_alloc&) {
    ReportError(place, {7, "Out of memory"}, line);
  } catch (const std::exception& error) {
    ReportError(place, {51, std::string("Internal error: ") + error.what()}, line);
  } catch (...) {
    ReportError(place, {51, "Internal error"}, line);
  }
}

}  // namespace corvanel
