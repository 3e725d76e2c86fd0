#include "brum/printers/text_stream.h"

namespace brum {

TextBuffer::int_type TextBuffer::overflow(int_type byte) {
  if (!traits_type::eq_int_type(byte, traits_type::eof())) {
    text_.push_back(traits_type::to_char_type(byte));
  }
  return traits_type::not_eof(byte);
}

std::streamsize TextBuffer::xsputn(const char* bytes, std::streamsize count) {
  if (count <= 0) {
    return 0;
  }
  text_.append(bytes, static_cast<std::size_t>(count));
  return count;
}

std::string TextStream::take_text() {
  // A string of up to 15 bytes needs no memory of its own; a longer one may waste three quarters.
  const std::string_view written = text();
  if (written.size() <= 15 || buffer_.capacity() / 4 > written.size()) {
    return std::string(written);
  }
  return buffer_.take();
}

}  // namespace brum
