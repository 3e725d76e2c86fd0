#ifndef BRUM_UTILS_MEMORY_POOL_H
#define BRUM_UTILS_MEMORY_POOL_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

#include "brum/utils/large_memory.h"
#include "brum/utils/sanitizers.h"

#if BRUM_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace brum {

/**
 * Source of blocks of one fixed size, cut from large chunks.
 *
 * Taking and giving back a block is one pointer pop or push on a free list; `std::malloc` is called
 * once per chunk, and chunks grow geometrically up to a bound. A chunk that is large enough is put
 * on huge pages where the system has them. Blocks are aligned to 8 bytes. A chunk is one link word
 * (to the chunk got before it) followed by its blocks without gaps; the first word of a free block
 * links to the next free block.
 *
 *     MemoryPool<24, false> pool;
 *     void* block = pool.take_block();   // 24 bytes, contents undefined
 *     pool.give_back(block);             // the next block to be taken
 *     pool.release();                    // frees all memory; every block is gone
 *
 * `Size` is the number of bytes of a block, a multiple of 8; `Flag` must be false.
 *
 * The pool never destroys what lies in its blocks, and its destructor frees nothing: the owner
 * destroys its objects and then calls `release`. No locks: one thread at a time. Under
 * AddressSanitizer the bytes of a block that was given back are poisoned, but for the link.
 */
template <std::size_t Size, bool Flag>
class MemoryPool {
  static_assert(!Flag, "only the pool without a lock exists");
  static_assert(Size >= sizeof(void*), "a free block holds a link");
  static_assert(Size % alignof(void*) == 0, "blocks are packed and aligned to 8 bytes");

 public:
  /**
   * Makes an empty pool. `first_blocks` is the number of blocks of the first chunk (0 counts as 1),
   * `factor` what the number is multiplied with after each chunk, `most_blocks` its bound, or 0 for
   * none.
   */
  explicit MemoryPool(std::size_t first_blocks = 16, float factor = 2.0F,
                      std::size_t most_blocks = 8192)
      : next_chunk_blocks(first_blocks), growth_factor(factor), largest_chunk(most_blocks) {}

  MemoryPool(const MemoryPool&) = delete;
  MemoryPool& operator=(const MemoryPool&) = delete;
  ~MemoryPool() = default;

  std::uint64_t next_chunk_blocks;  ///< blocks that the next chunk will hold
  float growth_factor;              ///< multiplies `next_chunk_blocks` after each chunk
  std::uint64_t largest_chunk;      ///< bound on the blocks of a chunk; 0 for none
  void* chunk_list = nullptr;       ///< the newest chunk; its first word links to the one before it
  void* free_list = nullptr;        ///< the first free block; its first word links to the next one

  /**
   * Gets a chunk and gives its first block, the head of a null-terminated chain of all blocks of
   * the chunk in address order. Does not touch the free list. Throws std::bad_alloc and changes
   * nothing when the memory cannot be had or its size in bytes exceeds 64 bits.
   */
  void* grow_pool();

  /**
   * Takes a block off the free list, growing the pool if there is none. Throws what `grow_pool`
   * throws.
   */
  void* take_block() {
    if (free_list == nullptr) {
      free_list = grow_pool();
    }
    void* const block = free_list;
    free_list = link_of(block);
#if BRUM_ADDRESS_SANITIZER
    ASAN_UNPOISON_MEMORY_REGION(block, Size);
#endif
    return block;
  }

  /**
   * Puts `block`, which came from this pool and holds no object any more, at the head of the free
   * list.
   */
  void give_back(void* block) noexcept {
    set_link(block, free_list);
    free_list = block;
#if BRUM_ADDRESS_SANITIZER
    ASAN_POISON_MEMORY_REGION(static_cast<char*>(block) + sizeof(void*), Size - sizeof(void*));
#endif
  }

  /**
   * Gives the first block of the only chunk, or null when there is none or another chunk besides.
   */
  void* begin_of_only_chunk() const noexcept {
    return chunk_list == nullptr || link_of(chunk_list) != nullptr ? nullptr
                                                                   : first_block_of(chunk_list);
  }

  /**
   * Frees every chunk. The pool is empty afterwards and may be used again; its growth settings
   * stay.
   */
  void release() noexcept {
    while (chunk_list != nullptr) {
      void* const chunk = chunk_list;
      chunk_list = link_of(chunk);
      std::free(chunk);
    }
    free_list = nullptr;
  }

 private:
  static constexpr std::size_t link_size = sizeof(void*);

  static void* link_of(const void* block) noexcept {
    return *static_cast<void* const*>(block);
  }
  static void set_link(void* block, void* next) noexcept {
    ::new (block) void*(next);
  }

  static char* first_block_of(void* chunk) noexcept {
    return static_cast<char*>(chunk) + link_size;
  }

  std::uint64_t chunk_blocks_after(std::uint64_t blocks) const noexcept;
};

template <std::size_t Size, bool Flag>
void* MemoryPool<Size, Flag>::grow_pool() {
  const std::uint64_t blocks = next_chunk_blocks == 0 ? 1 : next_chunk_blocks;
  std::size_t bytes = 0;
  if (__builtin_mul_overflow(blocks, Size, &bytes) ||
      __builtin_add_overflow(bytes, link_size, &bytes)) {
    throw std::bad_alloc();
  }
  void* const chunk = std::malloc(bytes);
  if (chunk == nullptr) {
    throw std::bad_alloc();
  }
  prefer_huge_pages(chunk, bytes);
  set_link(chunk, chunk_list);
  chunk_list = chunk;
  next_chunk_blocks = chunk_blocks_after(blocks);

  char* const first = first_block_of(chunk);
  char* const last = first + (blocks - 1) * Size;
  for (char* block = first; block != last; block += Size) {
    set_link(block, block + Size);
  }
  set_link(last, nullptr);
  return first;
}

template <std::size_t Size, bool Flag>
std::uint64_t MemoryPool<Size, Flag>::chunk_blocks_after(std::uint64_t blocks) const noexcept {
  constexpr float beyond_uint64 = 18446744073709551616.0F;  // 2^64
  const float product = static_cast<float>(blocks) * growth_factor;
  std::uint64_t next = 0;
  if (product >= beyond_uint64) {
    next = std::numeric_limits<std::uint64_t>::max();
  } else if (product > 0.0F) {
    next = static_cast<std::uint64_t>(product);
  }
  return largest_chunk != 0 && next > largest_chunk ? largest_chunk : next;
}

}  // namespace brum

#endif
