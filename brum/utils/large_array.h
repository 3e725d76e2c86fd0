#ifndef BRUM_UTILS_LARGE_ARRAY_H
#define BRUM_UTILS_LARGE_ARRAY_H

#include <cstddef>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "brum/utils/large_memory.h"

namespace brum {

/// The bytes of `count` elements of `element_bytes` bytes. Throws std::bad_alloc where they are
/// more than there is a number for.
inline std::size_t large_array_bytes(std::size_t count, std::size_t element_bytes) {
  if (count > std::numeric_limits<std::size_t>::max() / element_bytes) {
    throw std::bad_alloc();
  }
  return count * element_bytes;
}

/// An array of fixed length that may become large. Its elements are zero at first: numbers,
/// pointers, or structures of these. A large one costs no time before its elements are used.
template <class T>
class LargeArray {
  static_assert(std::is_trivial_v<T>, "zero bytes must be a value");

 public:
  LargeArray() = default;

  /// Throws std::bad_alloc.
  explicit LargeArray(std::size_t size)
      : memory_(LargeBlock::zeroed(large_array_bytes(size, element_bytes))), size_(size) {}

  LargeArray(LargeArray&& other) noexcept
      : memory_(std::move(other.memory_)), size_(std::exchange(other.size_, 0)) {}
  LargeArray& operator=(LargeArray&& other) noexcept {
    memory_ = std::move(other.memory_);
    size_ = std::exchange(other.size_, 0);
    return *this;
  }
  ~LargeArray() = default;

  std::size_t size() const noexcept { return size_; }
  T* begin() noexcept { return reinterpret_cast<T*>(memory_.begin()); }
  T* end() noexcept { return begin() + size_; }
  const T* begin() const noexcept { return reinterpret_cast<const T*>(memory_.begin()); }
  const T* end() const noexcept { return begin() + size_; }
  T& operator[](std::size_t index) noexcept { return begin()[index]; }
  const T& operator[](std::size_t index) const noexcept { return begin()[index]; }

 private:
  // NOLINTNEXTLINE(bugprone-sizeof-expression): elements may be pointers
  static constexpr std::size_t element_bytes = sizeof(T);

  LargeBlock memory_;
  std::size_t size_ = 0;
};

/// A list that may become large: what std::vector is, but that elements are not copied one by one
/// nor twice in memory when it grows.
template <class T>
class LargeList {
  static_assert(std::is_trivially_copyable_v<T>, "elements move with their memory");

 public:
  LargeList() = default;
  LargeList(LargeList&& other) noexcept
      : memory_(std::move(other.memory_)),
        size_(std::exchange(other.size_, 0)),
        capacity_(std::exchange(other.capacity_, 0)) {}
  LargeList& operator=(LargeList&& other) noexcept {
    memory_ = std::move(other.memory_);
    size_ = std::exchange(other.size_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
    return *this;
  }
  ~LargeList() = default;

  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }

  /// The number of elements that there is memory for.
  std::size_t capacity() const noexcept { return capacity_; }

  T* begin() noexcept { return reinterpret_cast<T*>(memory_.begin()); }
  T* end() noexcept { return begin() + size_; }
  const T* begin() const noexcept { return reinterpret_cast<const T*>(memory_.begin()); }
  const T* end() const noexcept { return begin() + size_; }
  T& operator[](std::size_t index) noexcept { return begin()[index]; }
  const T& operator[](std::size_t index) const noexcept { return begin()[index]; }

  /// The last element; there must be one.
  T& back() noexcept { return begin()[size_ - 1]; }
  const T& back() const noexcept { return begin()[size_ - 1]; }

  /// Throws std::bad_alloc and then changes nothing.
  void push_back(const T& element) {
    if (size_ == capacity_) {
      grow();
    }
    new (begin() + size_) T(element);
    ++size_;
  }

  void pop_back() noexcept { --size_; }

  /// Drops the elements from the one at `size` on, of which there are at least as many, and keeps
  /// the memory.
  void shrink(std::size_t size) noexcept { size_ = size; }

  /// Drops the elements and keeps the memory.
  void clear() noexcept { size_ = 0; }

 private:
  // NOLINTNEXTLINE(bugprone-sizeof-expression): elements may be pointers
  static constexpr std::size_t element_bytes = sizeof(T);

  [[gnu::noinline]] void grow() {
    constexpr std::size_t smallest = 64;
    std::size_t bytes = large_array_bytes(capacity_ == 0 ? smallest : capacity_ * 2, element_bytes);
    if (bytes > huge_page_bytes) {
      // Whole huge pages: what lies behind them would be on small ones.
      bytes = large_array_bytes((bytes - 1) / huge_page_bytes + 1, huge_page_bytes);
    }
    memory_.grow(bytes);
    capacity_ = bytes / element_bytes;
  }

  LargeBlock memory_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace brum

#endif  // BRUM_UTILS_LARGE_ARRAY_H
