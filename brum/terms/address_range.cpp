#include "brum/terms/address_range.h"

#include <algorithm>
#include <atomic>
#include <cstdint>

#include "brum/utils/large_memory.h"
#include "brum/utils/sanitizers.h"

#if defined(__linux__) && defined(__LP64__) && !BRUM_THREAD_SANITIZER && !BRUM_MEMORY_SANITIZER
#define BRUM_HAS_FIXED_ADDRESSES
#include <sys/mman.h>
#endif

namespace brum {

#ifdef BRUM_HAS_FIXED_ADDRESSES

namespace {

// Far from where Linux puts programs, heaps, libraries and stacks, and free under AddressSanitizer.
constexpr std::uintptr_t first_place = std::uintptr_t{0x2000} << 32U;
constexpr std::size_t range_bytes = std::size_t{1} << 36U;
constexpr std::size_t num_places = 64;
constexpr std::size_t smallest_step = std::size_t{1} << 16U;
constexpr std::size_t largest_step = std::size_t{1} << 22U;

/// A bit for each place that a range of this program has, for which the system need not be asked: a
/// program with very many managers would ask in vain for all of them whenever it makes one.
constinit std::atomic<std::uint64_t> places_had{0};
static_assert(num_places <= 64);

/// Reserves a place; gives null when it is taken or cannot be had.
std::byte* reserve(std::uintptr_t place) {
  // The address is a number here, by design.
  auto* wanted = reinterpret_cast<void*>(place);  // NOLINT(performance-no-int-to-ptr)
  void* got = ::mmap(wanted, range_bytes, PROT_NONE,
                     MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED_NOREPLACE, -1, 0);
  if (got != wanted) {
    // An old kernel takes the address for a hint. Else got is MAP_FAILED, which munmap refuses.
    ::munmap(got, range_bytes);
    return nullptr;
  }
  prefer_huge_pages(got, range_bytes);
  return static_cast<std::byte*>(got);
}

}  // namespace

AddressRange::AddressRange() noexcept {
  for (std::size_t place = 0; place < num_places && base_ == nullptr; ++place) {
    const std::uint64_t bit = std::uint64_t{1} << place;
    if ((places_had.fetch_or(bit) & bit) == 0) {
      base_ = reserve(first_place + place * range_bytes);
      if (base_ == nullptr) {
        places_had.fetch_and(~bit);
      }
    }
  }
}

AddressRange::~AddressRange() {
  if (base_ != nullptr) {
    ::munmap(base_, range_bytes);
    const std::size_t place = (reinterpret_cast<std::uintptr_t>(base_) - first_place) / range_bytes;
    places_had.fetch_and(~(std::uint64_t{1} << place));
  }
}

void* AddressRange::take(std::size_t bytes) noexcept {
  if (base_ == nullptr || bytes > range_bytes - used_) {
    return nullptr;
  }
  if (used_ + bytes > committed_) {
    const std::size_t usual = std::clamp(committed_, smallest_step, largest_step);
    const std::size_t missing =
        (used_ + bytes - committed_ + smallest_step - 1) / smallest_step * smallest_step;
    const std::size_t step = std::min(std::max(usual, missing), range_bytes - committed_);
    if (::mprotect(base_ + committed_, step, PROT_READ | PROT_WRITE) != 0) {
      return nullptr;
    }
    committed_ += step;
  }
  std::byte* result = base_ + used_;
  used_ += bytes;
  return result;
}

#else

AddressRange::AddressRange() noexcept = default;

AddressRange::~AddressRange() = default;

void* AddressRange::take(std::size_t /*bytes*/) noexcept {
  return nullptr;
}

#endif

}  // namespace brum
