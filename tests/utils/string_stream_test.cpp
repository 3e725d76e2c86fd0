#include "brum/utils/string_stream.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <ios>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include "brum/utils/large_memory.h"
#include "tests/support/failing_memory.h"

namespace brum {
namespace {

TEST(StringStream, KeepsWhatIsWritten) {
  StringStream out;
  EXPECT_EQ(out.text(), "");
  out.write("", 0);
  out << "a" << 12 << 'c';
  out.put('d');
  out.write("e\0f", 3);
  EXPECT_EQ(out.text(), std::string_view("a12cde\0f", 8));
  EXPECT_EQ(out.tellp(), std::streampos(8));
  out.seekp(1);
  EXPECT_TRUE(out.fail());
}

TEST(StringStream, BeginsAsANewStream) {
  StringStream out;
  out << std::hex << std::setprecision(2) << "a" << std::setw(9);
  out.setstate(std::ios_base::eofbit);
  out.begin_text(0);
  EXPECT_TRUE(out.good());
  out << "" << 255 << ' ' << 1.0 / 3;
  EXPECT_EQ(out.text(), "255 0.333333");
}

TEST(StringStream, HasTheRoomThatWasAskedFor) {
  for (const std::size_t bytes : {std::size_t{100'000}, 3 * huge_page_bytes}) {
    StringStream out;
    out.begin_text(bytes);
    const std::string half(bytes / 2, 'x');
    const testing::MemoryFault none(std::numeric_limits<std::size_t>::max());
    out << half << half;
    EXPECT_EQ(none.allocations(), 0U);
    EXPECT_TRUE(out.text() == half + half);
  }
}

TEST(StringStream, GivesItsTextAndTakesMemory) {
  StringStream out;
  out.begin_text(1'000);
  out << "first";
  std::string taken(1'000, 'x');
  const char* const memory = taken.data();
  taken.swap(out.text());
  EXPECT_EQ(taken, "first");
  const testing::MemoryFault none(std::numeric_limits<std::size_t>::max());
  out.begin_text(1'000);
  out << "second";
  EXPECT_EQ(out.text(), "second");
  EXPECT_EQ(out.text().data(), memory);
  EXPECT_EQ(none.allocations(), 0U);
}

TEST(StringStream, KeepsNoMemoryOfMuchLongerTexts) {
  StringStream out;
  out.begin_text(100'000);
  const std::size_t capacity = out.text().capacity();
  out.begin_text(capacity / 4);
  EXPECT_EQ(out.text().capacity(), capacity);
  out.begin_text(22'000);
  EXPECT_LT(out.text().capacity(), 50'000U);
}

TEST(StringStream, ThrowsWhereMemoryEnds) {
  StringStream out;
  out << "kept";
  const std::string large(10'000, 'x');
  {
    const testing::MemoryFault fault(1);
    EXPECT_THROW(out << large, std::bad_alloc);
  }
  EXPECT_TRUE(out.bad());
  EXPECT_EQ(out.text(), "kept");
  {
    const testing::MemoryFault fault(1);
    EXPECT_THROW(out.begin_text(10'000), std::bad_alloc);
  }
  out.begin_text(10'000);
  out << large;
  EXPECT_TRUE(out.text() == large);
}

}  // namespace
}  // namespace brum
