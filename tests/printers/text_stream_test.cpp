#include "brum/printers/text_stream.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

#include "tests/support/failing_memory.h"

namespace brum {
namespace {

TEST(TextStream, KeepsWhatIsWritten) {
  TextStream out;
  EXPECT_EQ(out.text(), "");
  out.write("", 0);  // before there is any memory
  EXPECT_EQ(out.text(), "");
  out << "a" << 12 << 'c';
  out.put('d');
  out.write("e\0f", 3);
  EXPECT_EQ(out.text(), std::string_view("a12cde\0f", 8));
  out.clear_text();
  EXPECT_EQ(out.text(), "");
  out << "next";
  EXPECT_EQ(out.text(), "next");
}

TEST(TextStream, GrowsByPiecesOfEverySize) {
  TextStream out;
  std::string expected;
  for (std::size_t length = 0; length < 2'000; length += 7) {
    const std::string piece(length, static_cast<char>('a' + length % 26));
    out << piece;
    out.put('.');
    expected += piece + '.';
  }
  EXPECT_EQ(out.text(), expected);
  const std::string large(1'000'000, 'x');
  out << large;
  EXPECT_EQ(out.text(), expected + large);
}

TEST(TextStream, ThrowsWhereMemoryEnds) {
  TextStream out;
  out << "kept";
  const std::string large(10'000, 'x');
  bool threw = false;
  {
    const testing::MemoryFault fault(1);
    try {
      out << large;
    } catch (const std::bad_alloc&) {
      threw = true;
    }
  }
  EXPECT_TRUE(threw);
  EXPECT_EQ(out.text(), "kept");
  out.clear_text();
  out << large;
  EXPECT_EQ(out.text(), large);
}

}  // namespace
}  // namespace brum
