#include "brum/utils/hash_containers.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>

namespace brum::hsh {

namespace {

/** The bucket counts of a table: primes, each about twice the one before. */
constexpr std::array<std::uint64_t, 28> primes = {
    31,       73,        151,       313,       643,        1291,       2593,
    5233,     10501,     21013,     42073,     84181,      168451,     337219,
    674701,   1349473,   2699299,   5398891,   10798093,   21596719,   43193641,
    86387383, 172775299, 345550609, 691101253, 1382202559, 2764405229, 4294867387};

/**
 * Whether a table of `size` values is to grow. The quotient is taken in single precision, as the
 * limits rest on it.
 */
bool load_exceeds_limit(std::uint64_t size, std::uint64_t count) {
  const float load = static_cast<float>(size) / static_cast<float>(count);
  return static_cast<double>(load) > 0.7;
}

/**
 * The least size for which `load_exceeds_limit`, which is monotone in the size and holds at
 * `count`.
 */
std::uint64_t least_size_over_limit(std::uint64_t count) {
  std::uint64_t low = 0;
  std::uint64_t high = count;
  while (low < high) {
    const std::uint64_t middle = low + (high - low) / 2;
    if (load_exceeds_limit(middle, count)) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return low;
}

}  // namespace

std::size_t choose_bucket_count(std::size_t n) {
  const auto* const found = std::lower_bound(primes.begin(), primes.end(), n);
  return found == primes.end() ? primes.back() : *found;
}

BucketCount::BucketCount(std::size_t count)
    : buckets(count),
      reciprocal(std::numeric_limits<std::uint64_t>::max() / count),
      size_to_grow_at(least_size_over_limit(count)) {}

const BucketCount& BucketCount::smallest() {
  static const BucketCount count(primes.front());
  return count;
}

}  // namespace brum::hsh
