#include "tests/support/allocated_bytes.h"

#include <malloc.h>

extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace brum::testing {

std::size_t allocated_bytes() {
  if (__sanitizer_get_current_allocated_bytes != nullptr) {
    return __sanitizer_get_current_allocated_bytes();
  }
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

}  // namespace brum::testing
