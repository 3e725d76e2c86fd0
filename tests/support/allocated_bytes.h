#ifndef BRUM_TESTS_SUPPORT_ALLOCATED_BYTES_H
#define BRUM_TESTS_SUPPORT_ALLOCATED_BYTES_H

#include <cstddef>

namespace brum::testing {

/// The number of bytes that are allocated, by the count of the sanitizer in charge; without one,
/// the number of bytes of the program's address space, which is more and grows in steps.
std::size_t allocated_bytes();

}  // namespace brum::testing

#endif
