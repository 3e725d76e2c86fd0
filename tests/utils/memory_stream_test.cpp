#include "brum/utils/memory_stream.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <ios>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include "tests/support/failing_memory.h"

namespace brum {
namespace {

TEST(MemoryStream, KeepsWhatIsWritten) {
  MemoryStream out;
  EXPECT_EQ(out.text(), "");
  out.write("", 0);  // before there is any memory
  EXPECT_EQ(out.text(), "");
  out << "a" << 12 << 'c';
  out.put('d');
  out.write("e\0f", 3);
  EXPECT_EQ(out.text(), std::string_view("a12cde\0f", 8));
}

TEST(MemoryStream, ServesForOneTextAfterAnother) {
  MemoryStream out;
  out.clear_text();  // before there is any memory
  EXPECT_EQ(out.text(), "");
  const std::string large(10'000, 'a');
  out << large;
  out.setstate(std::ios_base::eofbit);
  out.clear_text();
  EXPECT_TRUE(out.good());
  EXPECT_EQ(out.text(), "");
  const testing::MemoryFault fault(1, true);
  out << large;
  EXPECT_FALSE(fault.hit());
  EXPECT_EQ(out.text().size(), large.size());
}

TEST(MemoryStream, TakesSingleBytesWithoutNumber) {
  MemoryStream out;
  std::string expected;
  for (int i = 0; i < 5'000; ++i) {
    const auto byte = static_cast<char>('a' + i % 26);
    out.put(byte);
    expected += byte;
  }
  EXPECT_EQ(out.text(), expected);
}

TEST(MemoryStream, FlushingChangesNothing) {
  MemoryStream out;
  out << "a";
  EXPECT_EQ(out.rdbuf()->pubsync(), 0);
  EXPECT_TRUE(out.flush().good());
  EXPECT_EQ(out.text(), "a");
}

TEST(MemoryStream, TellsWhereItStands) {
  MemoryStream out;
  EXPECT_EQ(out.tellp(), std::streampos(0));
  out << "abc";
  EXPECT_EQ(out.tellp(), std::streampos(3));
  out << std::string(10'000, 'x');
  EXPECT_EQ(out.tellp(), std::streampos(10'003));
  out.clear_text();
  EXPECT_EQ(out.tellp(), std::streampos(0));
  out << "abc";
  out.seekp(1);
  EXPECT_TRUE(out.fail());
  out.clear_text();
  out << "de";
  out.seekp(-1, std::ios_base::end);
  EXPECT_TRUE(out.fail());
  EXPECT_EQ(out.text(), "de");
  EXPECT_EQ(out.rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::in), std::streampos(-1));
  EXPECT_EQ(out.rdbuf()->pubseekoff(0, std::ios_base::end, std::ios_base::out), std::streampos(2));
}

TEST(MemoryStream, WritesNumbersAsANewStreamOnceCleared) {
  const auto expect_cleared = [](MemoryStream& out) {
    out.clear_text();
    out << "" << 255 << ' ' << 1.0 / 3 << ' ' << 2.0;
    EXPECT_EQ(out.text(), "255 0.333333 2");
  };
  MemoryStream out;
  out << std::hex << std::showbase << 255;
  EXPECT_EQ(out.text(), "0xff");
  expect_cleared(out);
  out << std::setprecision(2);
  expect_cleared(out);
  out << std::setw(9);
  expect_cleared(out);
  out << std::hex << std::setprecision(2) << std::setw(9);
  expect_cleared(out);
  expect_cleared(out);
}

// From the heap to the system's own pages and on, by pieces of every size.
TEST(MemoryStream, GrowsBeyondHugePages) {
  MemoryStream out;
  std::string expected;
  for (std::size_t length = 0; length < 6'000; ++length) {
    const std::string piece(length, static_cast<char>('a' + length % 26));
    out << piece << '.';
    expected += piece;
    expected += '.';
  }
  ASSERT_GT(expected.size(), std::size_t{16} << 20U);
  EXPECT_TRUE(out.text() == expected);
  out << expected;
  EXPECT_TRUE(out.text() == expected + expected);
}

TEST(MemoryStream, GrowsInLeaps) {
  MemoryStream out;
  const testing::MemoryFault none(std::numeric_limits<std::size_t>::max());
  for (int i = 0; i < 100'000; ++i) {
    out.put('x');
  }
  EXPECT_LE(none.allocations(), 10U);
}

TEST(MemoryStream, HasTheRoomThatItWasToldToMake) {
  MemoryStream out;
  out << "a";
  out.reserve(100'000);
  const std::string large(100'000, 'b');
  const testing::MemoryFault none(std::numeric_limits<std::size_t>::max());
  out << large;
  out.reserve(0);
  EXPECT_EQ(none.allocations(), 0U);
  EXPECT_EQ(out.text(), 'a' + large);
}

TEST(MemoryStream, ThrowsWhereMemoryEnds) {
  MemoryStream out;
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
  EXPECT_TRUE(out.bad());
  EXPECT_EQ(out.text(), "kept");
  out.clear();
  out << large;
  EXPECT_EQ(out.text(), "kept" + large);
}

TEST(MemoryStream, RefusesMoreThanThereCanBe) {
  MemoryStream out;
  out << "kept";
  const std::streamsize most = std::numeric_limits<std::streamsize>::max();
  EXPECT_THROW(out.rdbuf()->sputn("", most), std::bad_alloc);
  EXPECT_THROW(out.rdbuf()->sputn("", most / 4), std::bad_alloc);
  EXPECT_THROW(out.reserve(std::numeric_limits<std::size_t>::max()), std::bad_alloc);
  EXPECT_EQ(out.text(), "kept");
}

}  // namespace
}  // namespace brum
