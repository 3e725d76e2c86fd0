#ifndef BRUM_UTILS_LARGE_MEMORY_H
#define BRUM_UTILS_LARGE_MEMORY_H

#include <cstddef>
#include <new>
#include <utility>

#include "brum/utils/export.h"

namespace brum {

/// Bytes of a huge page; smaller blocks have nothing to gain from one.
inline constexpr std::size_t huge_page_bytes = std::size_t{1} << 21U;

/// Gives a block of `bytes` bytes, null when there is no memory; its contents are undefined.
///
/// A block of `huge_page_bytes` or more is the system's own, begins at a multiple of that number,
/// and the system is asked to put huge pages under it: a formula of a million terms then takes some
/// dozens of page faults instead of many thousands, and a walk that jumps about in it misses fewer
/// address translations. Smaller blocks come from `operator new`, and so do all where the system
/// knows no huge pages.
BRUM_EXPORT void* allocate_large(std::size_t bytes) noexcept;

/// The same with contents of zeros, which a large block has without being written to.
BRUM_EXPORT void* allocate_large_zeroed(std::size_t bytes) noexcept;

/// Makes a block of `old_bytes` bytes that one of these functions gave one of `bytes` bytes, at
/// least as many, and gives its place; its contents stay, without being copied when the
/// block is large. Gives null when there is no memory; the block is then as it was.
BRUM_EXPORT void* grow_large(void* block, std::size_t old_bytes, std::size_t bytes) noexcept;

/// Asks for huge pages under a block of `bytes` bytes from elsewhere, where whole ones fit.
BRUM_EXPORT void prefer_huge_pages(void* block, std::size_t bytes) noexcept;

/// Gives back a block of `bytes` bytes, or nothing for null.
BRUM_EXPORT void free_large(void* block, std::size_t bytes) noexcept;

/// Owns a block of memory that may become large.
class LargeBlock {
 public:
  LargeBlock() = default;

  /// A block of `bytes` bytes of undefined contents. Throws std::bad_alloc.
  explicit LargeBlock(std::size_t bytes) { grow(bytes); }

  /// A block of `bytes` bytes, all zero. Throws std::bad_alloc.
  static LargeBlock zeroed(std::size_t bytes) {
    LargeBlock block;
    block.begin_ = allocate_large_zeroed(bytes);
    if (block.begin_ == nullptr) {
      throw std::bad_alloc();
    }
    block.bytes_ = bytes;
    return block;
  }

  LargeBlock(LargeBlock&& other) noexcept
      : begin_(std::exchange(other.begin_, nullptr)), bytes_(std::exchange(other.bytes_, 0)) {}
  LargeBlock& operator=(LargeBlock&& other) noexcept {
    free_large(begin_, bytes_);
    begin_ = std::exchange(other.begin_, nullptr);
    bytes_ = std::exchange(other.bytes_, 0);
    return *this;
  }
  ~LargeBlock() { free_large(begin_, bytes_); }

  /// Makes the block one of `bytes` bytes, at least as many as before, perhaps at another place;
  /// its contents stay. Throws std::bad_alloc and then changes nothing.
  void grow(std::size_t bytes) {
    void* const block = grow_large(begin_, bytes_, bytes);
    if (block == nullptr) {
      throw std::bad_alloc();
    }
    begin_ = block;
    bytes_ = bytes;
  }

  /// The first byte, null for a block of 0 bytes.
  std::byte* begin() const noexcept { return static_cast<std::byte*>(begin_); }

  std::size_t size() const noexcept { return bytes_; }

 private:
  void* begin_ = nullptr;
  std::size_t bytes_ = 0;
};

}  // namespace brum

#endif  // BRUM_UTILS_LARGE_MEMORY_H
