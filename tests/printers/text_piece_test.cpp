#include "brum/printers/text_piece.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>

#include "tests/support/small_buffer.h"

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

using TextPieceInSmallBuffer = testing::SmallBufferTest;

TEST_F(TextPieceInSmallBuffer, LiesThereIfThereIsRoom) {
  TextPiece fits(out, memory, 16);
  fits.add("0123456789abcdef");
  EXPECT_EQ(buffer.text(), "");
  fits.write();
  EXPECT_EQ(buffer.text(), "0123456789abcdef");
  EXPECT_EQ(buffer.calls(), 0);
  write_piece("g", 1);
  EXPECT_EQ(buffer.text(), "0123456789abcdefg");
  EXPECT_EQ(buffer.calls(), 1);
}

// The piece may turn out shorter than it was said to be: the rest of the room is the next one's.
TEST_F(TextPieceInSmallBuffer, LeavesTheRoomThatItDoesNotNeed) {
  for (int i = 0; i < 3; ++i) {
    write_piece("abc", 10);
  }
  EXPECT_EQ(buffer.calls(), 0);
  EXPECT_EQ(buffer.text(), "abcabcabc");
}

TEST_F(TextPieceInSmallBuffer, LeavesNothingUnlessItIsWritten) {
  {
    TextPiece dropped(out, memory, 10);
    dropped.add("dropped");
  }
  write_text(out, "kept");
  EXPECT_EQ(buffer.text(), "kept");
}

TEST_F(TextPieceInSmallBuffer, PartsGoThereOneByOne) {
  TextParts parts(out);
  parts.add('(');
  EXPECT_EQ(buffer.text(), "(");
  parts.add("not ");
  EXPECT_EQ(buffer.text(), "(not ");
  EXPECT_EQ(buffer.calls(), 0);
  parts.add(bytes_of(30));
  parts.add(')');
  EXPECT_EQ(buffer.text(), "(not " + bytes_of(30) + ')');
  EXPECT_EQ(buffer.calls(), 1);
}

}  // namespace
}  // namespace brum
