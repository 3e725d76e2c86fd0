#ifndef BRUM_TESTS_SUPPORT_FAILING_MEMORY_H
#define BRUM_TESTS_SUPPORT_FAILING_MEMORY_H

#include <cstddef>
#include <limits>

namespace brum::testing {

/**
 * While an object of this class lives, one allocation of this thread fails: `failing`, counted from
 * 1, and those after it too if `lasting`. Counted are `operator new` and `malloc` as called from
 * the program itself; GMP's own allocations are neither counted nor failed, because GMP would end
 * the program.
 *
 *     MemoryFault fault(3);
 *     EXPECT_THROW(work(), std::bad_alloc);
 *
 * Objects do not nest. Assertions of the test framework allocate too: make them after the object's
 * life where the count matters.
 */
class MemoryFault {
 public:
  static constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

  explicit MemoryFault(std::size_t failing, bool lasting = false) noexcept;
  MemoryFault(const MemoryFault&) = delete;
  MemoryFault& operator=(const MemoryFault&) = delete;
  ~MemoryFault();

  /** Whether an allocation has failed. */
  bool hit() const noexcept;

  /** The number of allocations asked for so far, the failed ones included. */
  std::size_t allocations() const noexcept;
};

}  // namespace brum::testing

#endif
