#ifndef BRUM_BENCH_MEMORY_USE_H
#define BRUM_BENCH_MEMORY_USE_H

#include <cstddef>
#include <functional>
#include <optional>

namespace brum::bench {

/// Memory of one piece of work, in bytes.
struct MemoryUse {
  std::size_t peak;   // the most that was resident beyond what was resident before
  std::size_t after;  // what is resident beyond that when the work is done
};

/// Measures `work` by doing it once in a child process, so that memory which earlier work left with
/// the allocator does not count as there already. Gives nothing where the system does not tell or
/// the child dies.
std::optional<MemoryUse> measure_memory(const std::function<void()>& work);

}  // namespace brum::bench

#endif  // BRUM_BENCH_MEMORY_USE_H
