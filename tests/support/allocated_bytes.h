#ifndef BRUM_TESTS_SUPPORT_ALLOCATED_BYTES_H
#define BRUM_TESTS_SUPPORT_ALLOCATED_BYTES_H

#include <cstddef>

namespace brum::testing {

/// The number of bytes of the heap that are in use, by the count of the allocator in charge: that
/// of the C library, or of AddressSanitizer.
std::size_t allocated_bytes();

}  // namespace brum::testing

#endif
