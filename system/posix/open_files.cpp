#include "system/open_files.h"

#include <sys/resource.h>

namespace corvanel {

size_t RaiseOpenFiles() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return 0;
  const rlim_t before = limit.rlim_cur;
  limit.rlim_cur = limit.rlim_max;
  return setrlimit(RLIMIT_NOFILE, &limit) == 0 ? limit.rlim_max : before;
}

}  // namespace corvanel
