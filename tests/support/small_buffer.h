#ifndef BRUM_TESTS_SUPPORT_SMALL_BUFFER_H
#define BRUM_TESTS_SUPPORT_SMALL_BUFFER_H

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

#include "brum/printers/text_piece.h"

namespace brum::testing {

/// A buffer with a put area of a few bytes, which counts what does not go there.
class SmallBuffer : public std::streambuf {
 public:
  SmallBuffer() { setp(area_.data(), area_.data() + area_.size()); }

  std::string text() const { return written_ + std::string(pbase(), pptr()); }
  int calls() const { return calls_; }

 private:
  int_type overflow(int_type byte) override {
    ++calls_;
    empty();
    if (!traits_type::eq_int_type(byte, traits_type::eof())) {
      sputc(traits_type::to_char_type(byte));
    }
    return traits_type::not_eof(byte);
  }

  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    ++calls_;
    empty();
    written_.append(bytes, static_cast<std::size_t>(count));
    return count;
  }

  int sync() override {
    ++calls_;
    empty();
    return 0;
  }

  void empty() {
    written_.append(pbase(), pptr());
    setp(area_.data(), area_.data() + area_.size());
  }

  std::array<char, 16> area_{};
  std::string written_;
  int calls_ = 0;
};

/// For tests of what is written to such a buffer.
class SmallBufferTest : public ::testing::Test {
 protected:
  /// Writes a piece that is said to have up to `most_bytes` bytes.
  void write_piece(std::string_view text, std::size_t most_bytes) {
    TextPiece piece(out, memory, most_bytes);
    piece.add(text);
    piece.write();
  }

  SmallBuffer buffer;
  std::ostream out{&buffer};
  PieceMemory memory;
};

}  // namespace brum::testing

#endif  // BRUM_TESTS_SUPPORT_SMALL_BUFFER_H
