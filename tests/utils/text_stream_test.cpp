#include "brum/utils/text_stream.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <ios>
#include <string>
#include <string_view>

namespace brum {
namespace {

/// Takes bytes as the classes that are made of it do, but without a put area.
class Buffer : public TextBuffer {
 public:
  std::string_view text() const override { return text_; }

 private:
  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    text_.append(bytes, static_cast<std::size_t>(count));
    return count;
  }

  std::string text_;
};

class Stream : public TextStream {
 public:
  explicit Stream(TextBuffer& buffer) { attach(buffer); }
  using TextStream::reset_state;
};

TEST(TextStream, TakesSingleBytes) {
  Buffer buffer;
  Stream out(buffer);
  out.put('a').put('\xff');
  out << 'b';
  EXPECT_EQ(buffer.text(), "a\377b");
  EXPECT_NE(buffer.sputc('c'), std::char_traits<char>::eof());
  EXPECT_NE(buffer.sputc('\xff'), std::char_traits<char>::eof());
}

TEST(TextStream, TellsWhereItStandsAndStaysThere) {
  Buffer buffer;
  Stream out(buffer);
  EXPECT_EQ(out.tellp(), std::streampos(0));
  out << "abc";
  EXPECT_EQ(out.tellp(), std::streampos(3));
  constexpr auto to_write = std::ios_base::out;
  EXPECT_EQ(buffer.pubseekoff(0, std::ios_base::cur, to_write), std::streampos(3));
  EXPECT_EQ(buffer.pubseekoff(0, std::ios_base::end, to_write), std::streampos(3));
  EXPECT_EQ(buffer.pubseekoff(0, std::ios_base::beg, to_write), std::streampos(-1));
  EXPECT_EQ(buffer.pubseekoff(1, std::ios_base::cur, to_write), std::streampos(-1));
  EXPECT_EQ(buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in), std::streampos(-1));
  out.seekp(0);
  EXPECT_TRUE(out.fail());
}

TEST(TextStream, GetsTheStateOfANewStream) {
  Buffer buffer;
  Stream out(buffer);
  const std::ios fresh(nullptr);
  const auto expect_new_after = [&](const char* what, const auto& change) {
    change();
    out.reset_state();
    EXPECT_EQ(out.rdstate(), std::ios_base::goodbit) << what;
    EXPECT_EQ(out.flags(), fresh.flags()) << what;
    EXPECT_EQ(out.precision(), fresh.precision()) << what;
    EXPECT_EQ(out.width(), fresh.width()) << what;
  };
  expect_new_after("nothing", [] {});
  expect_new_after("eofbit", [&] { out.setstate(std::ios_base::eofbit); });
  expect_new_after("failbit", [&] { out.setstate(std::ios_base::failbit); });
  expect_new_after("flags", [&] { out << std::hex << std::showbase; });
  expect_new_after("precision", [&] { out << std::setprecision(5); });
  expect_new_after("width", [&] { out << std::setw(1); });
  expect_new_after("all", [&] { out << std::oct << std::setprecision(1) << std::setw(7); });
}

}  // namespace
}  // namespace brum
