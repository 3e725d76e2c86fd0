#include "brum/utils/string_stream.h"

#include "brum/utils/large_memory.h"

namespace brum {

std::streamsize StringBuffer::xsputn(const char* bytes, std::streamsize count) {
  if (count <= 0) {
    return 0;
  }
  string.append(bytes, static_cast<std::size_t>(count));
  return count;
}

void StringStream::begin_text(std::size_t bytes) {
  constexpr std::size_t most_spare = 4;
  std::string& text = buffer_.string;
  text.clear();
  reset_state();
  if (bytes > text.capacity() || bytes < text.capacity() / most_spare) {
    std::string().swap(text);  // else both would be there for a moment
    text.reserve(bytes);
    prefer_huge_pages(text.data(), text.capacity());
  }
}

}  // namespace brum
