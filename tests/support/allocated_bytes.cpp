#include "tests/support/allocated_bytes.h"

#include <unistd.h>

#include <fstream>

extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace brum::testing {

std::size_t allocated_bytes() {
  if (__sanitizer_get_current_allocated_bytes != nullptr) {
    return __sanitizer_get_current_allocated_bytes();
  }
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

}  // namespace brum::testing
