#ifndef BRUM_TERMS_ADDRESS_RANGE_H
#define BRUM_TERMS_ADDRESS_RANGE_H

#include <cstddef>

#include "brum/utils/export.h"

namespace brum {

/// Memory at addresses that are the same in every run of a program, whatever the randomisation of
/// address spaces.
///
/// The order of hash tables that are keyed by addresses follows the addresses, and so do the
/// documents that are written from such tables: with objects in an AddressRange the same program
/// writes the same bytes in every run. Ranges lie at fixed places of which each object takes the
/// first that is free, so the second one alive gets the second place, and so on.
///
/// Where the system does not give the place (a limit on the address space, a sanitizer or tool that
/// lays memory out itself, all places taken, not Linux on 64 bits), the range is empty, and its
/// owner takes its memory elsewhere.
class BRUM_EXPORT AddressRange {
 public:
  AddressRange() noexcept;
  AddressRange(const AddressRange&) = delete;
  AddressRange& operator=(const AddressRange&) = delete;
  ~AddressRange();

  /// Gives the next `bytes` bytes, zero at first, null when the range has no more. `bytes` must be
  /// a multiple of 8; the result is aligned to 8.
  void* take(std::size_t bytes) noexcept;

 private:
  std::byte* base_ = nullptr;  // null for an empty range
  std::size_t used_ = 0;       // bytes given out
  std::size_t committed_ = 0;  // bytes that may be read and written
};

}  // namespace brum

#endif  // BRUM_TERMS_ADDRESS_RANGE_H
