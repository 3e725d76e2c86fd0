#include "brum/printers/text_piece.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>

namespace brum {
namespace {

/// Bytes that tell their place.
std::string bytes_of(std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) {
    bytes.push_back(static_cast<char>('a' + i % 26));
  }
  return bytes;
}

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

TEST(TextPiece, HoldsItsPartsInOrder) {
  std::ostringstream out;
  PieceMemory memory;
  TextPiece piece(out, memory, 16);
  piece.add('(');
  piece.add(std::string_view("and"));
  piece.add(" (to_real ");
  piece.add(std::string_view());
  piece.add("))");
  piece.write();
  EXPECT_EQ(out.str(), "(and (to_real ))");
}

TEST(TextPiece, TakesTextsOfEveryLength) {
  PieceMemory memory;  // of one piece after another
  for (std::size_t first = 0; first < 70; ++first) {
    for (std::size_t second = 0; second < 70; ++second) {
      std::ostringstream out;
      TextPiece piece(out, memory, first + second + 1);
      piece.add(bytes_of(first));
      piece.add(' ');
      piece.add(bytes_of(second));
      piece.write();
      ASSERT_EQ(out.str(), bytes_of(first) + ' ' + bytes_of(second));
    }
  }
}

TEST(TextPiece, LiesInTheBufferWhereThereIsRoom) {
  SmallBuffer buffer;
  std::ostream out(&buffer);
  PieceMemory memory;
  TextPiece fits(out, memory, 16);
  fits.add("0123456789abcdef");
  EXPECT_EQ(buffer.text(), "");
  fits.write();
  EXPECT_EQ(buffer.text(), "0123456789abcdef");
  EXPECT_EQ(buffer.calls(), 0);
  TextPiece next(out, memory, 1);
  next.add('g');
  next.write();
  EXPECT_EQ(buffer.text(), "0123456789abcdefg");
  EXPECT_EQ(buffer.calls(), 1);
}

// The piece may turn out shorter than it was said to be: the rest of the room is the next one's.
TEST(TextPiece, LeavesTheRoomThatItDoesNotNeed) {
  SmallBuffer buffer;
  std::ostream out(&buffer);
  PieceMemory memory;
  for (int i = 0; i < 3; ++i) {
    TextPiece piece(out, memory, 10);
    piece.add("abc");
    piece.write();
  }
  EXPECT_EQ(buffer.calls(), 0);
  EXPECT_EQ(buffer.text(), "abcabcabc");
}

TEST(TextPiece, LeavesNothingUnlessItIsWritten) {
  SmallBuffer buffer;
  std::ostream out(&buffer);
  PieceMemory memory;
  {
    TextPiece dropped(out, memory, 10);
    dropped.add("dropped");
  }
  write_text(out, "kept");
  EXPECT_EQ(buffer.text(), "kept");
}

TEST(WriteText, FillsTheBufferBeforeItIsCalled) {
  SmallBuffer buffer;
  std::ostream out(&buffer);
  write_text(out, "0123456789");
  write_text(out, "");
  write_text(out, "abcdef");
  EXPECT_EQ(buffer.calls(), 0);
  write_text(out, "g");
  EXPECT_EQ(buffer.calls(), 1);
  write_text(out, bytes_of(100));
  EXPECT_EQ(buffer.text(), "0123456789abcdefg" + bytes_of(100));
}

TEST(WriteText, FlushesBeforeAndAfterAsTheStreamWants) {
  SmallBuffer tied_buffer;
  std::ostream tied(&tied_buffer);
  SmallBuffer buffer;
  std::ostream out(&buffer);
  PieceMemory memory;
  out.tie(&tied);
  write_text(out, "a");
  TextPiece piece(out, memory, 1);
  piece.add('b');
  piece.write();
  EXPECT_EQ(tied_buffer.calls(), 2);
  out.tie(nullptr);
  out << std::unitbuf;
  const int calls = buffer.calls();
  write_text(out, "c");
  EXPECT_EQ(buffer.calls(), calls + 2);  // written and flushed
  EXPECT_EQ(buffer.text(), "abc");
}

TEST(WriteText, LeavesAStreamAloneThatIsNotGood) {
  SmallBuffer buffer;
  std::ostream out(&buffer);
  PieceMemory memory;
  out.setstate(std::ios_base::eofbit);
  write_text(out, "a");
  TextPiece piece(out, memory, 1);
  piece.add('b');
  piece.write();
  EXPECT_EQ(buffer.text(), "");
}

TEST(WriteText, HasNoPartInWidthAndFill) {
  SmallBuffer buffer;
  std::ostream out(&buffer);
  out << std::setw(9) << std::setfill('*');
  write_text(out, "ab");
  EXPECT_EQ(buffer.text(), "ab");
  EXPECT_EQ(out.width(), 9);
}

}  // namespace
}  // namespace brum
