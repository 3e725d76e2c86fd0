#ifndef BRUM_TERMS_ARENA_H
#define BRUM_TERMS_ARENA_H

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace brum {

/// Storage for objects that live as long as their owner and need no destruction.
///
/// Objects lie one after another in large chunks; nothing is given back before the arena dies.
/// A failed allocation throws std::bad_alloc and changes nothing.
class Arena {
 public:
  Arena() = default;
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

  std::vector<std::unique_ptr<std::byte[]>> chunks_;
  std::byte* free_ = nullptr;
  std::size_t free_bytes_ = 0;
};

}  // namespace brum

#endif  // BRUM_TERMS_ARENA_H
