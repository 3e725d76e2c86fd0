#include "brum/readers/smtlib2_lexer.h"

#include <array>
#include <string_view>
#include <utility>

#include "brum/readers/byte_classes.h"

namespace brum {

namespace {

constexpr unsigned char class_hexadecimal = 4;  // 0 to 9, a to f, A to F
constexpr unsigned char class_binary = 8;
constexpr unsigned char class_in_bars = 16;  // runs of a quoted symbol: no bar, backslash, LF, NUL
constexpr unsigned char class_in_string = 32;  // runs of a string: no quotation mark, LF, NUL

constexpr ByteClasses make_smtlib2_bytes() {
  ByteClasses bytes{};
  add_to_classes(bytes, decimal_digits, class_digit | class_symbol | class_hexadecimal);
  add_to_classes(bytes, ascii_letters, class_symbol);
  add_to_classes(bytes, "~!@$%^&*_-+=<>.?/", class_symbol);
  add_to_classes(bytes, "abcdefABCDEF", class_hexadecimal);
  add_to_classes(bytes, "01", class_binary);
  add_others_to_classes(bytes, "\n|\\", class_in_bars);
  add_others_to_classes(bytes, "\n\"", class_in_string);
  return bytes;
}

constexpr ByteClasses smtlib2_bytes = make_smtlib2_bytes();

/// What begins with a byte.
enum class Beginning : unsigned char {
  nothing,
  symbol,
  number,
  left_bracket,
  right_bracket,
  quoted_symbol,
  string,
  radix_constant,
  keyword,
};

constexpr std::array<Beginning, 256> make_beginnings() {
  std::array<Beginning, 256> beginnings{};
  for (std::size_t byte = 0; byte < beginnings.size(); ++byte) {
    if ((smtlib2_bytes[byte] & class_symbol) != 0) {
      beginnings[byte] =
          (smtlib2_bytes[byte] & class_digit) != 0 ? Beginning::number : Beginning::symbol;
    }
  }
  beginnings['('] = Beginning::left_bracket;
  beginnings[')'] = Beginning::right_bracket;
  beginnings['|'] = Beginning::quoted_symbol;
  beginnings['"'] = Beginning::string;
  beginnings['#'] = Beginning::radix_constant;
  beginnings[':'] = Beginning::keyword;
  return beginnings;
}

constexpr std::array<Beginning, 256> beginnings = make_beginnings();

}  // namespace

SmtLib2Lexer::SmtLib2Lexer(std::istream& in, std::string file_name, std::size_t buffer_bytes)
    : LexerBuffer(in, std::move(file_name), buffer_bytes) {}

void SmtLib2Lexer::error_malformed_token(const std::string& expected) {
  scan_run<smtlib2_bytes>(class_symbol);
  error_malformed(expected);
}

const Token& SmtLib2Lexer::next() {
  if (pushed_back_) {
    pushed_back_ = false;
    return token_;
  }
  skip_blanks_and_comments();
  begin_token();
  switch (beginnings[static_cast<unsigned char>(current())]) {
    case Beginning::symbol:
      scan_simple_symbol();
      break;
    case Beginning::number:
      scan_number();
      break;
    case Beginning::left_bracket:
      advance();
      finish(TokenKind::left_bracket, 0, 0);
      break;
    case Beginning::right_bracket:
      advance();
      finish(TokenKind::right_bracket, 0, 0);
      break;
    case Beginning::quoted_symbol:
      scan_quoted_symbol();
      break;
    case Beginning::string:
      scan_string();
      break;
    case Beginning::radix_constant:
      scan_radix_constant();
      break;
    case Beginning::keyword:
      scan_keyword();
      break;
    case Beginning::nothing:
      if (!at_end_of_buffer())
        error_at_byte();
      finish(TokenKind::end, 0, 0);
      break;
  }
  return token_;
}

void SmtLib2Lexer::scan_simple_symbol() {
  scan_run<smtlib2_bytes>(class_symbol);
  finish(TokenKind::symbol, 0, 0);
}

void SmtLib2Lexer::scan_keyword() {
  advance();
  scan_run<smtlib2_bytes>(class_symbol);
  finish(TokenKind::keyword, 1, 0);
  if (token_.text.empty())
    error_malformed_token("a keyword");
}

void SmtLib2Lexer::scan_number() {
  scan_run<smtlib2_bytes>(class_digit);
  const bool leading_zero = first_byte() == '0' && token_bytes() > 1;
  if (leading_zero)
    error_malformed_token("a numeral without leading zeros");
  if (current() != '.') {
    if (is_of(smtlib2_bytes, current(), class_symbol))
      error_malformed_token("a numeral");
    finish(TokenKind::numeral, 0, 0);
    return;
  }
  advance();
  const std::size_t fraction = token_bytes();
  scan_run<smtlib2_bytes>(class_digit);
  if (token_bytes() == fraction || is_of(smtlib2_bytes, current(), class_symbol)) {
    error_malformed_token("a decimal");
  }
  finish(TokenKind::decimal, 0, 0);
}

void SmtLib2Lexer::scan_radix_constant() {
  advance();
  const char radix = available() ? current() : '\0';
  if (radix != 'x' && radix != 'b')
    error_malformed_token("#x or #b and digits");
  advance();
  scan_run<smtlib2_bytes>(radix == 'x' ? class_hexadecimal : class_binary);
  const bool empty = token_bytes() == 2;
  if (empty || is_of(smtlib2_bytes, current(), class_symbol)) {
    error_malformed_token(radix == 'x' ? "#x and hexadecimal digits" : "#b and binary digits");
  }
  finish(radix == 'x' ? TokenKind::hexadecimal : TokenKind::binary, 2, 0);
}

void SmtLib2Lexer::scan_quoted_symbol() {
  advance();
  while (true) {
    scan_run<smtlib2_bytes>(class_in_bars);
    if (at_end_of_buffer()) {
      error(token_.position,
            "found the end of the input, expected the closing bar of a quoted symbol");
    }
    const char c = current();
    if (c == '|')
      break;
    if (c == '\\')
      error_here("found a backslash, expected the rest of a quoted symbol");
    if (c == '\0')
      error_here("found a NUL byte, expected the rest of a quoted symbol");
    advance_over_line_feed();
  }
  advance();
  finish(TokenKind::symbol, 1, 1);
  token_.quoted = true;
}

void SmtLib2Lexer::scan_string() {
  advance();
  while (true) {
    scan_run<smtlib2_bytes>(class_in_string);
    if (at_end_of_buffer()) {
      error(token_.position,
            "found the end of the input, expected the closing quotation mark of a string");
    }
    const char c = current();
    if (c == '\0')
      error_here("found a NUL byte, expected the rest of a string");
    if (c == '\n') {
      advance_over_line_feed();
      continue;
    }
    advance();
    if (!(available() && current() == '"'))
      break;
    advance();
  }
  finish(TokenKind::string, 1, 1);
}

}  // namespace brum
