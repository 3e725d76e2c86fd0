#include "brum/utils/large_memory.h"

#include <cstdint>
#include <cstring>

#include "brum/utils/sanitizers.h"

#if defined(__linux__) && !BRUM_ADDRESS_SANITIZER && !BRUM_THREAD_SANITIZER && \
    !BRUM_MEMORY_SANITIZER
#include <sys/mman.h>
#ifdef MADV_HUGEPAGE
#define BRUM_ASKS_FOR_HUGE_PAGES 1
#endif
#endif

namespace brum {

namespace {

void* fill_with_zeros(void* block, std::size_t bytes) noexcept {
  return block == nullptr ? nullptr : std::memset(block, 0, bytes);
}

void* copy_to_larger(void* block, std::size_t old_bytes, std::size_t bytes) noexcept {
  void* const place = allocate_large(bytes);
  if (place != nullptr && block != nullptr) {
    std::memcpy(place, block, old_bytes);
    free_large(block, old_bytes);
  }
  return place;
}

}  // namespace

#ifdef BRUM_ASKS_FOR_HUGE_PAGES

namespace {

bool is_mapped(std::size_t bytes) noexcept {
  return bytes >= huge_page_bytes;
}

/// The length of the mapping under a block: whole pages, which are of at most 64 KiB.
std::size_t mapped_bytes(std::size_t bytes) noexcept {
  constexpr std::size_t page = std::size_t{1} << 16U;
  return (bytes + page - 1) / page * page;
}

/// Maps `bytes` bytes at a multiple of `huge_page_bytes`. Gives null when they cannot be had.
void* map_aligned(std::size_t bytes) noexcept {
  if (bytes > SIZE_MAX - 2 * huge_page_bytes) {
    return nullptr;
  }
  const std::size_t length = mapped_bytes(bytes);
  void* const got = ::mmap(nullptr, length + huge_page_bytes, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (got == MAP_FAILED) {
    return nullptr;
  }
  char* const begin = static_cast<char*>(got);
  const std::size_t before = -reinterpret_cast<std::uintptr_t>(got) % huge_page_bytes;
  char* const block = begin + before;
  if (before != 0) {
    ::munmap(begin, before);
  }
  ::munmap(block + length, huge_page_bytes - before);
  return block;
}

/// Asks for huge pages in a mapping, where whole ones fit. A wish: the memory is as good when it is
/// refused. The whole mapping is named, as only what is alike throughout can be moved at once.
void ask_for_huge_pages(void* block, std::size_t bytes) noexcept {
  ::madvise(block, mapped_bytes(bytes), MADV_HUGEPAGE);
}

}  // namespace

void* allocate_large(std::size_t bytes) noexcept {
  if (!is_mapped(bytes)) {
    return ::operator new(bytes, std::nothrow);
  }
  void* const block = map_aligned(bytes);
  if (block != nullptr) {
    ask_for_huge_pages(block, bytes);
  }
  return block;
}

void* allocate_large_zeroed(std::size_t bytes) noexcept {
  void* const block = allocate_large(bytes);
  return is_mapped(bytes) ? block : fill_with_zeros(block, bytes);  // a new mapping is zero
}

void* grow_large(void* block, std::size_t old_bytes, std::size_t bytes) noexcept {
  if (!is_mapped(old_bytes)) {
    return copy_to_larger(block, old_bytes, bytes);
  }
  void* const place = map_aligned(bytes);
  if (place == nullptr) {
    return nullptr;
  }
  // The pages move, not their bytes, and the new mapping gives way to them. Should that fail, it is
  // left alone: it may be gone already, and its place another's.
  void* const moved = ::mremap(block, mapped_bytes(old_bytes), mapped_bytes(bytes),
                               MREMAP_MAYMOVE | MREMAP_FIXED, place);
  ask_for_huge_pages(place, bytes);
  return moved == MAP_FAILED ? nullptr : moved;
}

void prefer_huge_pages(void* block, std::size_t bytes) noexcept {
  const std::size_t before = -reinterpret_cast<std::uintptr_t>(block) % huge_page_bytes;
  if (bytes >= before + huge_page_bytes) {
    const std::size_t whole = (bytes - before) / huge_page_bytes * huge_page_bytes;
    ::madvise(static_cast<char*>(block) + before, whole, MADV_HUGEPAGE);
  }
}

void free_large(void* block, std::size_t bytes) noexcept {
  if (!is_mapped(bytes)) {
    ::operator delete(block);
  } else if (block != nullptr) {
    ::munmap(block, mapped_bytes(bytes));
  }
}

#else

void* allocate_large(std::size_t bytes) noexcept {
  return ::operator new(bytes, std::nothrow);
}

void* allocate_large_zeroed(std::size_t bytes) noexcept {
  return fill_with_zeros(allocate_large(bytes), bytes);
}

void* grow_large(void* block, std::size_t old_bytes, std::size_t bytes) noexcept {
  return copy_to_larger(block, old_bytes, bytes);
}

void prefer_huge_pages(void* /*block*/, std::size_t /*bytes*/) noexcept {}

void free_large(void* block, std::size_t /*bytes*/) noexcept {
  ::operator delete(block);
}

#endif

}  // namespace brum
