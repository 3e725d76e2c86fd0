#include "brum/readers/smtlib1_lexer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "brum/readers/read_error.h"

namespace brum {
namespace {

struct Expected {
  TokenKind kind;
  std::string raw;
  std::string text;
  std::string indices;

  bool operator==(const Expected&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Expected& token) {
  return out << static_cast<int>(token.kind) << " raw " << token.raw << " text " << token.text
             << " indices " << token.indices;
}

/// All tokens of a text but the end, which must come last.
std::vector<Expected> tokens(const std::string& text, std::size_t buffer_bytes) {
  std::istringstream in(text);
  SmtLib1Lexer lexer(in, "f", buffer_bytes);
  std::vector<Expected> found;
  while (lexer.next().kind != TokenKind::end) {
    const Token& token = lexer.token();
    found.push_back({token.kind, std::string(token.raw), std::string(token.text),
                     std::string(SmtLib1Lexer::indices(token))});
  }
  return found;
}

const std::vector<std::size_t> buffer_sizes = {1, 2, 3, 5, 1U << 12U};

std::string message(const std::string& text) {
  try {
    tokens(text, 16);
  } catch (const ReadError& error) {
    return error.what();
  }
  return "no error";
}

TEST(SmtLib1Lexer, CutsTokensWhateverTheBuffersSize) {
  const std::string text =
      "(x1 ?v $f ~ <= bv5[8];comment\nextract[31:0]:key {a b} \"s t\"\r\n0 12 1.50 _h-61_ x'.a)";
  const std::vector<Expected> expected = {
      {TokenKind::left_bracket, "(", "(", ""},
      {TokenKind::symbol, "x1", "x1", ""},
      {TokenKind::symbol, "?v", "?v", ""},
      {TokenKind::symbol, "$f", "$f", ""},
      {TokenKind::symbol, "~", "~", ""},
      {TokenKind::symbol, "<=", "<=", ""},
      {TokenKind::symbol, "bv5[8]", "bv5", "8"},
      {TokenKind::symbol, "extract[31:0]", "extract", "31:0"},
      {TokenKind::keyword, ":key", "key", ""},
      {TokenKind::string, "{a b}", "a b", ""},
      {TokenKind::string, "\"s t\"", "s t", ""},
      {TokenKind::numeral, "0", "0", ""},
      {TokenKind::numeral, "12", "12", ""},
      {TokenKind::decimal, "1.50", "1.50", ""},
      {TokenKind::symbol, "_h-61_", "_h-61_", ""},
      {TokenKind::symbol, "x'.a", "x'.a", ""},
      {TokenKind::right_bracket, ")", ")", ""},
  };
  for (const std::size_t bytes : buffer_sizes) {
    EXPECT_EQ(tokens(text, bytes), expected) << "buffer of " << bytes;
  }
}

TEST(SmtLib1Lexer, BracesNestAndBackslashesEscapeThem) {
  const std::vector<Expected> expected = {
      {TokenKind::string, R"({a {b} \} c})", R"(a {b} \} c)", ""},
      {TokenKind::string, "{}", "", ""},
      {TokenKind::string, "{\n}", "\n", ""},
      {TokenKind::string, R"("a \" b")", R"(a \" b)", ""},
      {TokenKind::string, "\"a\nb\"", "a\nb", ""},
  };
  for (const std::size_t bytes : buffer_sizes) {
    EXPECT_EQ(tokens(R"({a {b} \} c}{})"
                     "{\n}"
                     R"("a \" b")"
                     "\"a\nb\"",
                     bytes),
              expected)
        << "buffer of " << bytes;
  }
}

TEST(SmtLib1Lexer, TextsBecomeStringsOfVersion2) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {R"({ a })", R"(" a ")"},
      {R"({a "b"})", R"("a ""b""")"},
      {R"({\{ {x} \} \n})", R"("{ {x} } \n")"},
      {R"("a \" b \{")", R"("a "" b \{")"},
      {R"("")", R"("")"},
  };
  for (const auto& [text, expected] : rows) {
    std::istringstream in(text);
    SmtLib1Lexer lexer(in, "f");
    EXPECT_EQ(as_smtlib2_string(lexer.next()), expected) << text;
  }
}

TEST(SmtLib1Lexer, PositionsCountLinesAndBytes) {
  std::istringstream in("; one\n {a\nb} x\n\ny");
  SmtLib1Lexer lexer(in, "f", 2);
  EXPECT_EQ(lexer.next().position, (TextPosition{2, 2}));
  EXPECT_EQ(lexer.next().position, (TextPosition{3, 4}));
  EXPECT_EQ(lexer.next().position, (TextPosition{5, 1}));
  EXPECT_EQ(lexer.next().position, (TextPosition{5, 2}));
  std::istringstream text("\"a\nb\\\"\n\" x");
  SmtLib1Lexer of_text(text, "f", 2);
  EXPECT_EQ(of_text.next().position, (TextPosition{1, 1}));
  EXPECT_EQ(of_text.next().position, (TextPosition{3, 3}));
}

TEST(SmtLib1Lexer, RefusesWhatIsNoToken) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"]", "f:1:1: error: found the character ], expected the beginning of a token"},
      {"x }", "f:1:3: error: found the character }, expected the beginning of a token"},
      {"\x80", "f:1:1: error: found the byte 0x80, expected the beginning of a token"},
      {std::string("\0", 1), "f:1:1: error: found a NUL byte, expected text"},
      {"bv5[", "f:1:1: error: found bv5[, expected indices and ']'"},
      {"bv5[a]", "f:1:1: error: found bv5[, expected indices and ']'"},
      {"bv5[]", "f:1:1: error: found bv5[], expected indices between '[' and ']'"},
      {"f[1::2]", "f:1:1: error: found f[1::2], expected indices between '[' and ']'"},
      {"f[:2]", "f:1:1: error: found f[:2], expected indices between '[' and ']'"},
      {"f[2:]", "f:1:1: error: found f[2:], expected indices between '[' and ']'"},
      {"007", "f:1:1: error: found 007, expected a numeral without leading zeros or a decimal"},
      {"1.", "f:1:1: error: found 1., expected a numeral without leading zeros or a decimal"},
      {"3a", "f:1:1: error: found 3a, expected a numeral without leading zeros or a decimal"},
      {": x", "f:1:1: error: found :, expected a keyword"},
      {"\n{a {b}", "f:2:1: error: found the end of the input, expected '}'"},
      {"{a\\", "f:1:1: error: found the end of the input, expected '}'"},
      {std::string("{a\0}", 4),
       "f:1:3: error: found a NUL byte, expected the rest of a text in braces"},
      {"\"a",
       "f:1:1: error: found the end of the input, expected the closing quotation mark of a "
       "string"},
      {std::string("\"\0", 2), "f:1:2: error: found a NUL byte, expected the rest of a string"},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(message(text), expected) << text;
  }
}

TEST(SmtLib1Lexer, GivesATokenAgainThatWasPushedBack) {
  std::istringstream in("a b");
  SmtLib1Lexer lexer(in, "f");
  EXPECT_EQ(lexer.next().raw, "a");
  lexer.push_back();
  EXPECT_EQ(lexer.next().raw, "a");
  EXPECT_EQ(lexer.next().raw, "b");
}

}  // namespace
}  // namespace brum
