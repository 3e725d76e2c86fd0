#include "brum/utils/memory_stream.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <limits>
#include <new>

namespace brum {

/// Makes room for `bytes` more bytes. Throws std::bad_alloc and then changes nothing.
void MemoryBuffer::make_room(std::size_t bytes) {
  constexpr std::size_t smallest = 512;
  const std::size_t used = text().size();
  if (bytes > std::numeric_limits<std::size_t>::max() / 2 - used) {
    throw std::bad_alloc();
  }
  memory_.grow(std::max({smallest, memory_.size() * 2, used + bytes}));
  char* const begin = reinterpret_cast<char*>(memory_.begin());
  setp(begin, begin + memory_.size());
  move_end(used);
}

/// Counts `bytes` bytes that were put at the end as written.
void MemoryBuffer::move_end(std::size_t bytes) noexcept {
  for (; bytes > INT_MAX; bytes -= INT_MAX) {
    pbump(INT_MAX);
  }
  pbump(static_cast<int>(bytes));
}

MemoryBuffer::int_type MemoryBuffer::overflow(int_type byte) {
  if (!traits_type::eq_int_type(byte, traits_type::eof())) {
    make_room(1);
    *pptr() = traits_type::to_char_type(byte);
    pbump(1);
  }
  return traits_type::not_eof(byte);
}

std::streamsize MemoryBuffer::xsputn(const char* bytes, std::streamsize count) {
  if (count <= 0) {
    return 0;
  }
  const auto size = static_cast<std::size_t>(count);
  if (count > epptr() - pptr()) {
    make_room(size);
  }
  std::memcpy(pptr(), bytes, size);
  move_end(size);
  return count;
}

}  // namespace brum
