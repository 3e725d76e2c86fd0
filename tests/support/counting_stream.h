#ifndef BRUM_TESTS_SUPPORT_COUNTING_STREAM_H
#define BRUM_TESTS_SUPPORT_COUNTING_STREAM_H

#include <cstddef>
#include <ostream>
#include <streambuf>

namespace brum::testing {

/// Takes text and keeps only counts of it.
class CountingBuffer : public std::streambuf {
 public:
  std::size_t bytes = 0;
  std::size_t open_brackets = 0;
  std::size_t close_brackets = 0;
  std::size_t lines = 0;

 private:
  int_type overflow(int_type byte) override {
    if (!traits_type::eq_int_type(byte, traits_type::eof())) {
      count(traits_type::to_char_type(byte));
    }
    return traits_type::not_eof(byte);
  }
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    for (std::streamsize i = 0; i < length; ++i) {
      count(text[i]);
    }
    return length;
  }
  void count(char byte) {
    ++bytes;
    open_brackets += byte == '(' ? 1U : 0U;
    close_brackets += byte == ')' ? 1U : 0U;
    lines += byte == '\n' ? 1U : 0U;
  }
};

/// An output stream into a CountingBuffer.
class CountingStream : public std::ostream {
 public:
  CountingStream() : std::ostream(nullptr) { rdbuf(&counts); }

  CountingBuffer counts;
};

}  // namespace brum::testing

#endif
