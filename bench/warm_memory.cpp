#include "bench/warm_memory.h"

#include <benchmark/benchmark.h>

#include <cstddef>

#include "brum/utils/large_memory.h"

namespace brum::bench {

void warm_memory() {
  constexpr std::size_t bytes = std::size_t{1} << 30U;
  constexpr std::size_t smallest_page = 4096;
  const LargeBlock block(bytes);
  for (std::size_t place = 0; place < bytes; place += smallest_page) {
    block.begin()[place] = std::byte{1};
  }
  benchmark::ClobberMemory();
}

}  // namespace brum::bench
