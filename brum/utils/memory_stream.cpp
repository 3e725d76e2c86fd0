#include "brum/utils/memory_stream.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace brum {

/// Makes room for `bytes` more bytes. Throws std::bad_alloc and then changes nothing.
void MemoryBuffer::make_room(std::size_t bytes) {
  constexpr std::size_t smallest = 4096;
  const std::size_t used = text().size();
  if (bytes > std::numeric_limits<std::size_t>::max() - used) {
    throw std::bad_alloc();
  }
  memory_.grow(std::max({smallest, memory_.size() * 2, used + bytes}));
  setp(begin() + used, begin() + memory_.size());
}

std::streamsize MemoryBuffer::xsputn(const char* bytes, std::streamsize count) {
  if (count <= 0) {
    return 0;
  }
  const auto size = static_cast<std::size_t>(count);
  reserve(size);
  std::memcpy(pptr(), bytes, size);
  setp(pptr() + size, epptr());  // unlike pbump() for any size
  return count;
}

}  // namespace brum
