#ifndef BRUM_TERMS_ARENA_H
#define BRUM_TERMS_ARENA_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "brum/terms/address_range.h"
#include "brum/utils/export.h"
#include "brum/utils/large_memory.h"

namespace brum {

/// Storage for objects that live as long as their owner and need no destruction.
///
/// Objects lie one after another in large chunks; nothing is given back before the arena dies.
/// A failed allocation throws std::bad_alloc and changes nothing.
class BRUM_EXPORT Arena {
 public:
  /// Where the objects lie: anywhere, or at addresses that are the same in every run, as far as
  /// the system lets them (see AddressRange).
  enum class Placement : std::uint8_t { anywhere, reproducible };

  explicit Arena(Placement placement = Placement::anywhere) {
    if (placement == Placement::reproducible) {
      range_.emplace();
    }
  }
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  /// Gives `bytes` bytes, aligned for any object that needs at most 8. Throws std::bad_alloc.
  void* allocate(std::size_t bytes);

  /// Copies `text` and a closing NUL into the arena; the view does not include the NUL.
  std::string_view copy(std::string_view text);

  /// Copies a range of trivial values into the arena.
  template <class T>
  std::span<const T> copy(std::span<const T> values) {
    static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= alignment);
    T* target = static_cast<T*>(allocate(values.size_bytes()));
    std::uninitialized_copy(values.begin(), values.end(), target);
    return {target, values.size()};
  }

 private:
  static constexpr std::size_t alignment = 8;

  std::optional<AddressRange> range_;
  std::vector<LargeBlock> chunks_;
  std::size_t chunk_bytes_ = 0;  // of the chunk that is being filled
  std::byte* free_ = nullptr;
  std::size_t free_bytes_ = 0;
};

}  // namespace brum

#endif  // BRUM_TERMS_ARENA_H
