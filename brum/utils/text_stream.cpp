#include "brum/utils/text_stream.h"

namespace brum {

TextBuffer::int_type TextBuffer::overflow(int_type byte) {
  if (!traits_type::eq_int_type(byte, traits_type::eof())) {
    const char written = traits_type::to_char_type(byte);
    xsputn(&written, 1);
  }
  return traits_type::not_eof(byte);
}

TextBuffer::pos_type TextBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                         std::ios_base::openmode which) {
  const bool asks_for_place =
      offset == 0 && from != std::ios_base::beg && (which & std::ios_base::out) != 0;
  return asks_for_place ? static_cast<off_type>(text().size()) : off_type(-1);
}

}  // namespace brum
