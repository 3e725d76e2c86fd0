#include "brum/capi/sink_stream.h"

#include <algorithm>
#include <cstring>

namespace brum::capi {

SinkBuffer::SinkBuffer(brum_sink sink) : sink_(sink) {
  if (sink.write == nullptr) {
    throw NullArgument("the sink has no function");
  }
  setp(memory_.data(), memory_.data() + memory_.size());
}

void SinkBuffer::flush() {
  const auto count = static_cast<std::size_t>(pptr() - pbase());
  setp(memory_.data(), memory_.data() + memory_.size());  // first: a failure drops the text
  send(memory_.data(), count);
}

void SinkBuffer::drop_line_end() {
  if (pptr() != pbase() && pptr()[-1] == '\n') {
    pbump(-1);
  }
}

SinkBuffer::int_type SinkBuffer::overflow(int_type byte) {
  flush();
  if (!traits_type::eq_int_type(byte, traits_type::eof())) {
    *pptr() = traits_type::to_char_type(byte);
    pbump(1);
  }
  return traits_type::not_eof(byte);
}

std::streamsize SinkBuffer::xsputn(const char* bytes, std::streamsize count) {
  std::streamsize left = count;
  while (left > 0) {
    if (pptr() == epptr()) {
      flush();
    }
    const std::streamsize piece = std::min<std::streamsize>(left, epptr() - pptr());
    std::memcpy(pptr(), bytes, static_cast<std::size_t>(piece));
    pbump(static_cast<int>(piece));
    bytes += piece;
    left -= piece;
  }
  return count;
}

void SinkBuffer::send(const char* bytes, std::size_t count) const {
  if (count != 0 && sink_.write(sink_.data, bytes, count) != 0) {
    throw SinkFailure();
  }
}

}  // namespace brum::capi

namespace {

// A sink's function is called from C++ here, but may itself be called from C.
extern "C" int brum_write_to_file(void* data, const char* bytes, size_t count) {
  return std::fwrite(bytes, 1, count, static_cast<FILE*>(data)) == count ? 0 : 1;
}

extern "C" int brum_write_to_buffer(void* data, const char* bytes, size_t count) {
  static_cast<brum_buffer*>(data)->text.append(bytes, count);
  return 0;
}

}  // namespace

brum_sink brum_file_sink(FILE* file) noexcept {
  return {file == nullptr ? nullptr : brum_write_to_file, file};
}

brum_sink brum_buffer_sink(brum_buffer* buffer) noexcept {
  return {buffer == nullptr ? nullptr : brum_write_to_buffer, buffer};
}
