#include "brum/printers/text_piece.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

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
  PieceMemory memory;
  TextPiece piece(memory, 16);
  EXPECT_EQ(piece.text(), "");
  piece.add('(');
  piece.add(std::string_view("and"));
  piece.add(" (to_real ");
  piece.add(std::string_view());
  piece.add("))");
  EXPECT_EQ(piece.text(), "(and (to_real ))");
}

TEST(TextPiece, TakesTextsOfEveryLength) {
  PieceMemory memory;  // of one piece after another
  for (std::size_t first = 0; first < 70; ++first) {
    for (std::size_t second = 0; second < 70; ++second) {
      TextPiece piece(memory, first + second + 1);
      piece.add(bytes_of(first));
      piece.add(' ');
      piece.add(bytes_of(second));
      ASSERT_EQ(piece.text(), bytes_of(first) + ' ' + bytes_of(second));
    }
  }
}

}  // namespace
}  // namespace brum
