#ifndef BRUM_TESTS_FAULTS_EVERY_FAILURE_H
#define BRUM_TESTS_FAULTS_EVERY_FAILURE_H

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

#include "tests/support/failing_memory.h"

namespace brum::testing {

/// Runs `work` with its allocation number `failing` refused, and those after it too if `lasting`.
/// Gives whether there was such an allocation; then, and only then, `work` must end in
/// std::bad_alloc.
template <class Work>
bool fails_cleanly(std::size_t failing, bool lasting, const Work& work) {
  bool threw = false;
  bool hit = false;
  {
    const MemoryFault fault(failing, lasting);
    try {
      work();
    } catch (const std::bad_alloc&) {
      threw = true;
    }
    hit = fault.hit();
  }
  EXPECT_EQ(threw, hit) << "allocation " << failing << (lasting ? " and all after it" : "");
  return hit;
}

/// Calls `round(failing, lasting)` for every allocation, failing alone and with all after it, until
/// a round says that there was none to fail. Gives the number of allocations.
template <class Round>
std::size_t for_every_allocation(const Round& round) {
  std::size_t allocations = 0;
  for (const bool lasting : {false, true}) {
    std::size_t failing = 1;
    while (round(failing, lasting) && !::testing::Test::HasFailure())
      ++failing;
    allocations = failing - 1;
  }
  return allocations;
}

}  // namespace brum::testing

#endif  // BRUM_TESTS_FAULTS_EVERY_FAILURE_H
