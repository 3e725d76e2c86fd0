#ifndef BRUM_TESTS_SUPPORT_LIMITED_STREAM_H
#define BRUM_TESTS_SUPPORT_LIMITED_STREAM_H

#include <algorithm>
#include <cstddef>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

namespace brum::testing {

/// Thrown by a LimitedBuffer.
class StreamFault : public std::runtime_error {
 public:
  StreamFault() : std::runtime_error("the stream takes no more") {}
};

/// Takes text up to a number of bytes; what goes beyond is refused, or answered with a StreamFault.
/// Allocates nothing while it takes text.
class LimitedBuffer : public std::streambuf {
 public:
  enum class Beyond { refuse, raise };

  static constexpr std::size_t capacity = std::size_t{1} << 15U;

  explicit LimitedBuffer(std::size_t limit = capacity, Beyond beyond = Beyond::refuse)
      : limit_(std::min(limit, capacity)), beyond_(beyond), bytes_(limit_) {}

  std::string_view text() const { return {bytes_.data(), size_}; }

 private:
  int_type overflow(int_type byte) override {
    const char c = traits_type::to_char_type(byte);
    return xsputn(&c, 1) == 1 ? traits_type::not_eof(byte) : traits_type::eof();
  }

  std::streamsize xsputn(const char* text, std::streamsize count) override {
    const std::size_t taken = std::min(static_cast<std::size_t>(count), limit_ - size_);
    std::copy_n(text, taken, bytes_.data() + size_);
    size_ += taken;
    if (taken < static_cast<std::size_t>(count) && beyond_ == Beyond::raise)
      throw StreamFault();
    return static_cast<std::streamsize>(taken);
  }

  std::size_t limit_;
  Beyond beyond_;
  std::vector<char> bytes_;
  std::size_t size_ = 0;
};

/// An output stream into a LimitedBuffer.
class LimitedStream : public std::ostream {
 public:
  explicit LimitedStream(std::size_t limit = LimitedBuffer::capacity,
                         LimitedBuffer::Beyond beyond = LimitedBuffer::Beyond::refuse)
      : std::ostream(nullptr), buffer_(limit, beyond) {
    rdbuf(&buffer_);
  }

  std::string_view text() const { return buffer_.text(); }

 private:
  LimitedBuffer buffer_;
};

}  // namespace brum::testing

#endif  // BRUM_TESTS_SUPPORT_LIMITED_STREAM_H
