#include "brum/printers/write_text.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <ios>
#include <ostream>
#include <string>

#include "tests/support/small_buffer.h"

namespace brum {
namespace {

using WriteText = testing::SmallBufferTest;

TEST_F(WriteText, FillsTheBufferBeforeItIsCalled) {
  write_text(out, "0123456789");
  write_text(out, "");
  write_text(out, "abcdef");
  EXPECT_EQ(buffer.calls(), 0);
  write_text(out, "g");
  EXPECT_EQ(buffer.calls(), 1);
  write_text(out, std::string(100, 'h'));
  EXPECT_EQ(buffer.text(), "0123456789abcdefg" + std::string(100, 'h'));
}

TEST_F(WriteText, FlushesBeforeAndAfterAsTheStreamWants) {
  testing::SmallBuffer tied_buffer;
  std::ostream tied(&tied_buffer);
  out.tie(&tied);
  write_text(out, "a");
  write_piece("b", 1);
  EXPECT_EQ(tied_buffer.calls(), 2);
  out.tie(nullptr);
  out << std::unitbuf;
  const int calls = buffer.calls();
  write_text(out, "c");
  EXPECT_EQ(buffer.calls(), calls + 2);  // written and flushed
  EXPECT_EQ(buffer.text(), "abc");
}

TEST_F(WriteText, LeavesAStreamAloneThatIsNotGood) {
  out.setstate(std::ios_base::eofbit);
  write_text(out, "a");
  write_piece("b", 1);
  EXPECT_EQ(buffer.text(), "");
}

TEST_F(WriteText, HasNoPartInWidthAndFill) {
  out << std::setw(9) << std::setfill('*');
  write_text(out, "ab");
  EXPECT_EQ(buffer.text(), "ab");
  EXPECT_EQ(out.width(), 9);
}

}  // namespace
}  // namespace brum
