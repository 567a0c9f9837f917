#include "system/key_places.h"

namespace corvanel {

const uint32_t kBeforeFirstKey = 8;  // of X

}  // namespace corvanel
