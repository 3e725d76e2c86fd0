#include "brum/readers/smtlib2_lexer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace brum::testing {

namespace {

struct Seen {
  TokenKind kind;
  std::string raw;
  std::string text;
  bool quoted;
  std::size_t line;
  std::size_t column;

  bool operator==(const Seen&) const = default;
};

std::vector<Seen> tokens_of(const std::string& input, std::size_t buffer_bytes) {
  std::istringstream in(input);
  SmtLib2Lexer lexer(in, "f", buffer_bytes);
  std::vector<Seen> tokens;
  while (lexer.next().kind != TokenKind::end) {
    const Token& token = lexer.token();
    tokens.push_back({token.kind, std::string(token.raw), std::string(token.text), token.quoted,
                      token.position.line, token.position.column});
  }
  return tokens;
}

std::string error_of_tokens(const std::string& input) {
  try {
    tokens_of(input, 8);
  } catch (const ReadError& error) {
    return error.what();
  }
  return "no error";
}

using namespace std::string_literals;

}  // namespace

TEST(SmtLib2Lexer, GivesEveryKindOfTokenWithItsPlace) {
  const std::string input =
      "(assert x)\r\n"
      "  12 0 1.50 #b0110 #xFa9 :named \"a \"\"b\"\" c\"\n"
      "; a comment ( \" |\n"
      "|two\nlines| <=>! |x|";
  const std::vector<Seen> expected{
      {TokenKind::left_bracket, "(", "(", false, 1, 1},
      {TokenKind::symbol, "assert", "assert", false, 1, 2},
      {TokenKind::symbol, "x", "x", false, 1, 9},
      {TokenKind::right_bracket, ")", ")", false, 1, 10},
      {TokenKind::numeral, "12", "12", false, 2, 3},
      {TokenKind::numeral, "0", "0", false, 2, 6},
      {TokenKind::decimal, "1.50", "1.50", false, 2, 8},
      {TokenKind::binary, "#b0110", "0110", false, 2, 13},
      {TokenKind::hexadecimal, "#xFa9", "Fa9", false, 2, 20},
      {TokenKind::keyword, ":named", "named", false, 2, 26},
      {TokenKind::string, "\"a \"\"b\"\" c\"", "a \"\"b\"\" c", false, 2, 33},
      {TokenKind::symbol, "|two\nlines|", "two\nlines", true, 4, 1},
      {TokenKind::symbol, "<=>!", "<=>!", false, 5, 8},
      {TokenKind::symbol, "|x|", "x", true, 5, 13},
  };
  // The same with every cut of the input into blocks.
  for (const std::size_t buffer_bytes : {1U, 2U, 3U, 5U, 7U, 64U, 4096U}) {
    SCOPED_TRACE(buffer_bytes);
    EXPECT_EQ(tokens_of(input, buffer_bytes), expected);
  }
}

TEST(SmtLib2Lexer, CountsColumnsInBytes) {
  const std::vector<Seen> expected{{TokenKind::symbol, "|\xC3\xA9|", "\xC3\xA9", true, 1, 1},
                                   {TokenKind::symbol, "x", "x", false, 1, 6}};
  EXPECT_EQ(tokens_of("|\xC3\xA9| x", 16), expected);
}

TEST(SmtLib2Lexer, AcceptsWhateverAPrinterPutsBetweenBars) {
  std::string name;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '|' && byte != '\\') {
      name += static_cast<char>(byte);
    }
  }
  const std::vector<Seen> tokens = tokens_of("|" + name + "|", 4);
  ASSERT_EQ(tokens.size(), 1U);
  EXPECT_EQ(tokens[0].text, name);
}

TEST(SmtLib2Lexer, NeedsNoFinalNewline) {
  EXPECT_EQ(tokens_of("; only a comment", 4).size(), 0U);
  EXPECT_EQ(tokens_of("", 4).size(), 0U);
  EXPECT_EQ(tokens_of("abc", 2).size(), 1U);
}

TEST(SmtLib2Lexer, SaysWhatIsNoTokenAndWhere) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"\n 007", "f:2:2: error: found 007, expected a numeral without leading zeros"},
      {"00", "f:1:1: error: found 00, expected a numeral without leading zeros"},
      {"01", "f:1:1: error: found 01, expected a numeral without leading zeros"},
      {"12x", "f:1:1: error: found 12x, expected a numeral"},
      {"1.", "f:1:1: error: found 1., expected a decimal"},
      {"1.5.2", "f:1:1: error: found 1.5.2, expected a decimal"},
      {"#b012", "f:1:1: error: found #b012, expected #b and binary digits"},
      {"#b", "f:1:1: error: found #b, expected #b and binary digits"},
      {"#xg", "f:1:1: error: found #xg, expected #x and hexadecimal digits"},
      {"#xf!", "f:1:1: error: found #xf!, expected #x and hexadecimal digits"},
      {"#b0!", "f:1:1: error: found #b0!, expected #b and binary digits"},
      {"|a!| \"b!\" 01", "f:1:11: error: found 01, expected a numeral without leading zeros"},
      {"#o17", "f:1:1: error: found #o17, expected #x or #b and digits"},
      {"#", "f:1:1: error: found #, expected #x or #b and digits"},
      {"x :", "f:1:3: error: found :, expected a keyword"},
      {"|a\n b",
       "f:1:1: error: found the end of the input, expected the closing bar of a quoted "
       "symbol"},
      {"|a\\b|", "f:1:3: error: found a backslash, expected the rest of a quoted symbol"},
      {"|a\n"s + '\0' + "|",
       "f:2:1: error: found a NUL byte, expected the rest of a quoted symbol"},
      {"x \"abc",
       "f:1:3: error: found the end of the input, expected the closing quotation mark "
       "of a string"},
      {"\"ab"s + '\0' + "\"", "f:1:4: error: found a NUL byte, expected the rest of a string"},
      {"; ab"s + '\0' + "c", "f:1:5: error: found a NUL byte, expected the rest of a comment"},
      {"ab"s + '\0' + "c", "f:1:3: error: found a NUL byte, expected text"},
      {"a [b]", "f:1:3: error: found the character [, expected the beginning of a token"},
      {"a \xC3\xA9", "f:1:3: error: found the byte 0xC3, expected the beginning of a token"},
      {"\x7F", "f:1:1: error: found the byte 0x7F, expected the beginning of a token"},
  };
  for (const auto& [input, message] : rows) {
    EXPECT_EQ(error_of_tokens(input), message);
  }
}

TEST(SmtLib2Lexer, CutsLongTokensInMessages) {
  const std::string zeros(100, '0');
  EXPECT_EQ(error_of_tokens(zeros), "f:1:1: error: found " + std::string(60, '0') +
                                        "..., expected a numeral without leading zeros");
}

TEST(SmtLib2Lexer, GivesATokenAgainWhenItWasPushedBack) {
  std::istringstream in("a b");
  SmtLib2Lexer lexer(in, "f");
  EXPECT_EQ(lexer.next().text, "a");
  lexer.push_back();
  EXPECT_EQ(lexer.next().text, "a");
  EXPECT_EQ(lexer.next().text, "b");
}

TEST(SmtLib2Lexer, SaysThatAStreamCannotBeRead) {
  class BrokenBuffer : public std::streambuf {
    int_type underflow() override { throw 1; }
  };
  BrokenBuffer buffer;
  std::istream in(&buffer);
  SmtLib2Lexer lexer(in, "f");
  try {
    lexer.next();
    FAIL() << "no error";
  } catch (const ReadError&) {
    FAIL() << "not an error of the text";
  } catch (const Exception& error) {
    EXPECT_STREQ(error.what(), "cannot read f");
  }
}

}  // namespace brum::testing
