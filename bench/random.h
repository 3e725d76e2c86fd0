#ifndef BRUM_BENCH_RANDOM_H
#define BRUM_BENCH_RANDOM_H

#include <cstddef>
#include <cstdint>

namespace brum::bench {

/// Random numbers that are the same everywhere.
class Random {
 public:
  /// Gives a number below `bound`.
  std::size_t below(std::size_t bound) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::size_t>((state_ >> 33U) % bound);
  }

 private:
  std::uint64_t state_ = 1;
};

}  // namespace brum::bench

#endif  // BRUM_BENCH_RANDOM_H
