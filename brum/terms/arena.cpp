#include "brum/terms/arena.h"

#include <algorithm>
#include <limits>
#include <new>

namespace brum {

namespace {
constexpr std::size_t chunk_bytes = std::size_t{1} << 16U;
}

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
  if (rounded > chunk_bytes / 4) {
    // Large objects get a chunk of their own; the current chunk goes on being filled.
    chunks_.push_back(std::make_unique_for_overwrite<std::byte[]>(rounded));
    return chunks_.back().get();
  }
  if (rounded > free_bytes_) {
    auto chunk = std::make_unique_for_overwrite<std::byte[]>(chunk_bytes);
    chunks_.push_back(std::move(chunk));
    free_ = chunks_.back().get();
    free_bytes_ = chunk_bytes;
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
