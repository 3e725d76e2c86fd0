#include "brum/terms/arena.h"

#include <algorithm>
#include <limits>
#include <new>

namespace brum {

namespace {

// Each chunk is twice as long as the one before, up to a huge page.
constexpr std::size_t smallest_arena_chunk = std::size_t{1} << 16U;
constexpr std::size_t largest_arena_chunk = huge_page_bytes;

}  // namespace

void* Arena::allocate(std::size_t bytes) {
  if (bytes > std::numeric_limits<std::size_t>::max() / 2) {
    throw std::bad_alloc();
  }
  const std::size_t rounded = (bytes + alignment - 1) / alignment * alignment;
  if (range_) {
    if (void* place = range_->take(rounded); place != nullptr) {
      return place;
    }
  }
  if (rounded > smallest_arena_chunk / 4) {
    // Large objects get a chunk of their own; the current chunk goes on being filled.
    chunks_.emplace_back(rounded);
    return chunks_.back().begin();
  }
  if (rounded > free_bytes_) {
    const std::size_t usual =
        chunk_bytes_ == 0 ? smallest_arena_chunk : std::min(chunk_bytes_ * 2, largest_arena_chunk);
    chunks_.emplace_back(usual);
    free_ = chunks_.back().begin();
    chunk_bytes_ = usual;
    free_bytes_ = usual;
  }
  std::byte* result = free_;
  free_ += rounded;
  free_bytes_ -= rounded;
  return result;
}

std::string_view Arena::copy(std::string_view text) {
  char* target = static_cast<char*>(allocate(text.size() + 1));
  std::copy(text.begin(), text.end(), target);
  target[text.size()] = '\0';
  return {target, text.size()};
}

}  // namespace brum
