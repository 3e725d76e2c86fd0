#include "brum/printers/text_piece.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>

#include "brum/utils/memory_stream.h"

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

TEST(TextPiece, WritesItsPartsInOrder) {
  std::ostringstream out;
  TextPiece piece(out);
  piece.add('(');
  piece.add(std::string_view("and"));
  piece.add(" (to_real ");
  piece.add(std::string_view());
  piece.add("))");
  EXPECT_EQ(out.str(), "");
  piece.write();
  EXPECT_EQ(out.str(), "(and (to_real ))");
  piece.write();
  EXPECT_EQ(out.str(), "(and (to_real ))");
}

TEST(TextPiece, TakesTextsOfEveryLength) {
  for (std::size_t first = 0; first < 300; ++first) {
    for (const std::size_t second : {0, 1, 4, 8, 16, 17, 100, 255, 256, 257, 5'000}) {
      MemoryStream out;
      TextPiece piece(out);
      piece.add(bytes_of(first));
      piece.add(' ');
      piece.add(bytes_of(second));
      piece.add(" .. ");
      piece.write();
      ASSERT_EQ(out.text(), bytes_of(first) + ' ' + bytes_of(second) + " .. ");
    }
  }
}

TEST(TextPiece, HasRoomForLiteralsAfterATextThatFillsIt) {
  constexpr char literal[] = "0123456789abcdef0123456789abcdef";
  static_assert(sizeof(literal) - 1 == TextPiece::most_between);
  MemoryStream out;
  TextPiece piece(out);
  std::string expected;
  for (const std::size_t size : {256, 224, 255, 256}) {
    piece.add(bytes_of(size));
    piece.add(literal);
    expected += bytes_of(size) + literal;
  }
  piece.write();
  EXPECT_EQ(out.text(), expected);
}

TEST(TextPiece, GathersShortTexts) {
  std::ostringstream out;
  TextPiece piece(out);
  piece.add(bytes_of(200));
  EXPECT_EQ(out.str().size(), 0U);
  piece.add(bytes_of(57));
  EXPECT_EQ(out.str().size(), 200U);
  piece.add(bytes_of(300));
  EXPECT_EQ(out.str().size(), 557U);
}

}  // namespace
}  // namespace brum
