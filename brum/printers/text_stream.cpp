#include "brum/printers/text_stream.h"

#include <algorithm>
#include <cstring>

namespace brum {

namespace {
constexpr std::size_t smallest_memory = 256;
constexpr std::size_t longest_step = std::size_t{1} << 30U;
}  // namespace

void TextBuffer::make_room(std::size_t bytes) {
  const std::size_t used = text().size();
  if (bytes <= memory_.size() - used) {
    return;
  }
  memory_.resize(std::max({used + bytes, memory_.size() * 2, smallest_memory}));
  setp(memory_.data(), memory_.data() + memory_.size());
  advance(used);
}

void TextBuffer::advance(std::size_t bytes) {
  // pbump takes an int, and a text may be longer than that.
  for (; bytes > longest_step; bytes -= longest_step) {
    pbump(static_cast<int>(longest_step));
  }
  pbump(static_cast<int>(bytes));
}

TextBuffer::int_type TextBuffer::overflow(int_type byte) {
  if (!traits_type::eq_int_type(byte, traits_type::eof())) {
    make_room(1);
    *pptr() = traits_type::to_char_type(byte);
    pbump(1);
  }
  return traits_type::not_eof(byte);
}

std::streamsize TextBuffer::xsputn(const char* bytes, std::streamsize count) {
  if (count <= 0) {
    return 0;  // there may be no memory yet, and nothing may be copied to null, not even no bytes
  }
  const auto length = static_cast<std::size_t>(count);
  make_room(length);
  std::memcpy(pptr(), bytes, length);
  advance(length);
  return count;
}

}  // namespace brum
