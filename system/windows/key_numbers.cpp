#include "system/key_places.h"

namespace corvanel {

const uint32_t kBeforeFirstKey = 0;

}  // namespace corvanel
