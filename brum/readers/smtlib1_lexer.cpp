#include "brum/readers/smtlib1_lexer.h"

#include <string_view>
#include <utility>

#include "brum/readers/byte_classes.h"

namespace brum {

namespace {

constexpr unsigned char class_begin = 4;    // may begin a symbol
constexpr unsigned char class_index = 8;    // a digit or a colon
constexpr unsigned char class_braced = 16;  // runs in braces: no brace, backslash, LF, NUL
constexpr unsigned char class_string = 32;  // runs in a string: no quotation mark, backslash, …

constexpr ByteClasses make_smtlib1_bytes() {
  ByteClasses bytes{};
  add_to_classes(bytes, decimal_digits, class_digit | class_symbol | class_index);
  add_to_classes(bytes, ascii_letters, class_symbol | class_begin);
  add_to_classes(bytes, "_=<>&@#+-*/%|~?$!^", class_symbol | class_begin);
  add_to_classes(bytes, ".'", class_symbol);
  add_to_classes(bytes, ":", class_index);
  add_others_to_classes(bytes, "\n\\{}", class_braced);
  add_others_to_classes(bytes, "\n\\\"", class_string);
  return bytes;
}

constexpr ByteClasses smtlib1_bytes = make_smtlib1_bytes();

/// Whether these are numerals with a colon between each two.
bool are_indices(std::string_view text) {
  bool after_digit = false;
  for (const char c : text) {
    if (c == ':' && !after_digit)
      return false;
    after_digit = c != ':';
  }
  return after_digit;
}

}  // namespace

SmtLib1Lexer::SmtLib1Lexer(std::istream& in, std::string file_name, std::size_t buffer_bytes)
    : LexerBuffer(in, std::move(file_name), buffer_bytes) {}

std::string_view SmtLib1Lexer::indices(const Token& token) {
  if (token.raw.size() == token.text.size())
    return {};
  return token.raw.substr(token.text.size() + 1, token.raw.size() - token.text.size() - 2);
}

const Token& SmtLib1Lexer::next() {
  if (pushed_back_) {
    pushed_back_ = false;
    return token_;
  }
  skip_blanks_and_comments();
  begin_token();
  if (at_end_of_buffer()) {
    finish(TokenKind::end, 0, 0);
    return token_;
  }
  const char c = current();
  switch (c) {
    case '(':
      advance();
      finish(TokenKind::left_bracket, 0, 0);
      break;
    case ')':
      advance();
      finish(TokenKind::right_bracket, 0, 0);
      break;
    case '{':
      scan_user_value();
      break;
    case '"':
      scan_string();
      break;
    case ':':
      scan_keyword();
      break;
    default:
      if (is_of(smtlib1_bytes, c, class_digit)) {
        scan_number();
      } else if (is_of(smtlib1_bytes, c, class_begin)) {
        scan_symbol();
      } else {
        error_at_byte();
      }
  }
  return token_;
}

void SmtLib1Lexer::scan_symbol() {
  scan_run<smtlib1_bytes>(class_symbol);
  const std::size_t name_bytes = token_bytes();
  if (current() != '[') {
    finish(TokenKind::symbol, 0, 0);
    return;
  }
  advance();
  scan_run<smtlib1_bytes>(class_index);
  if (current() != ']')
    error_malformed("indices and ']'");
  advance();
  finish(TokenKind::symbol, 0, token_bytes() - name_bytes);
  if (!are_indices(indices(token_)))
    error_malformed("indices between '[' and ']'");
}

void SmtLib1Lexer::scan_keyword() {
  advance();
  scan_run<smtlib1_bytes>(class_symbol);
  finish(TokenKind::keyword, 1, 0);
  if (token_.text.empty())
    error_malformed("a keyword");
}

void SmtLib1Lexer::scan_number() {
  scan_run<smtlib1_bytes>(class_digit);
  bool well_formed = first_byte() != '0' || token_bytes() == 1;
  TokenKind kind = TokenKind::numeral;
  if (current() == '.') {
    kind = TokenKind::decimal;
    advance();
    const std::size_t fraction = token_bytes();
    scan_run<smtlib1_bytes>(class_digit);
    well_formed = well_formed && token_bytes() > fraction;
  }
  if (is_of(smtlib1_bytes, current(), class_symbol)) {
    well_formed = false;
    scan_run<smtlib1_bytes>(class_symbol);
  }
  if (!well_formed)
    error_malformed("a numeral without leading zeros or a decimal");
  finish(kind, 0, 0);
}

/// Moves the cursor over a backslash and what it escapes, if that is not a line feed.
void SmtLib1Lexer::scan_escaped() {
  advance();
  if (available() && current() != '\n' && current() != '\0')
    advance();
}

void SmtLib1Lexer::scan_user_value() {
  advance();
  for (std::size_t depth = 1; depth > 0;) {
    scan_run<smtlib1_bytes>(class_braced);
    if (at_end_of_buffer()) {
      error(token_.position, "found the end of the input, expected '}'");
    }
    const char c = current();
    switch (c) {
      case '\0':
        error_here("found a NUL byte, expected the rest of a text in braces");
      case '\n':
        advance_over_line_feed();
        break;
      case '\\':
        scan_escaped();
        break;
      default:
        depth = c == '{' ? depth + 1 : depth - 1;
        advance();
    }
  }
  finish(TokenKind::string, 1, 1);
}

void SmtLib1Lexer::scan_string() {
  advance();
  while (true) {
    scan_run<smtlib1_bytes>(class_string);
    if (at_end_of_buffer()) {
      error(token_.position,
            "found the end of the input, expected the closing quotation mark of a string");
    }
    const char c = current();
    if (c == '"')
      break;
    if (c == '\0')
      error_here("found a NUL byte, expected the rest of a string");
    if (c == '\\') {
      scan_escaped();
    } else {
      advance_over_line_feed();
    }
  }
  advance();
  finish(TokenKind::string, 1, 1);
}

std::string as_smtlib2_string(const Token& token) {
  std::string text = "\"";
  const char escaped = token.raw.front() == '{' ? '}' : '"';
  for (std::size_t i = 0; i < token.text.size(); ++i) {
    const bool escapes =
        token.text[i] == '\\' && i + 1 < token.text.size() &&
        (token.text[i + 1] == escaped || (escaped == '}' && token.text[i + 1] == '{'));
    if (escapes)
      ++i;
    text += token.text[i];
    if (token.text[i] == '"')
      text += '"';
  }
  return text + '"';
}

}  // namespace brum
