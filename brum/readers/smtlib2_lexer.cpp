#include "brum/readers/smtlib2_lexer.h"

#include <array>
#include <cstring>
#include <utility>

namespace brum {

namespace {

constexpr unsigned char class_blank = 1;
constexpr unsigned char class_digit = 2;
constexpr unsigned char class_symbol = 4;       // may stand in a simple symbol, digits included
constexpr unsigned char class_hexadecimal = 8;  // 0 to 9, a to f, A to F
constexpr unsigned char class_binary = 16;
constexpr unsigned char class_in_bars = 32;  // runs of a quoted symbol: no bar, backslash, LF, NUL
constexpr unsigned char class_in_string = 64;  // runs of a string: no quotation mark, LF, NUL

constexpr std::array<unsigned char, 256> make_classes() {
  std::array<unsigned char, 256> classes{};
  for (const char c : std::string_view(" \t\r\n"))
    classes[static_cast<unsigned char>(c)] |= class_blank;
  for (unsigned c = '0'; c <= '9'; ++c)
    classes[c] |= class_digit | class_symbol | class_hexadecimal;
  for (unsigned c = 'a'; c <= 'z'; ++c)
    classes[c] |= class_symbol;
  for (unsigned c = 'A'; c <= 'Z'; ++c)
    classes[c] |= class_symbol;
  for (const char c : std::string_view("~!@$%^&*_-+=<>.?/")) {
    classes[static_cast<unsigned char>(c)] |= class_symbol;
  }
  for (const char c : std::string_view("abcdefABCDEF")) {
    classes[static_cast<unsigned char>(c)] |= class_hexadecimal;
  }
  classes['0'] |= class_binary;
  classes['1'] |= class_binary;
  for (unsigned c = 1; c < 256; ++c) {
    if (c == '\n')
      continue;
    if (c != '|' && c != '\\')
      classes[c] |= class_in_bars;
    if (c != '"')
      classes[c] |= class_in_string;
  }
  return classes;
}

// NUL is in no class, so that every run ends at the NUL behind the filled part of the buffer.
constexpr std::array<unsigned char, 256> classes_of_bytes = make_classes();

bool is_of(char c, unsigned char classes) {
  return (classes_of_bytes[static_cast<unsigned char>(c)] & classes) != 0;
}

std::string describe_byte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte > 0x20 && byte < 0x7F)
    return std::string("the character ") + c;
  constexpr std::string_view digits = "0123456789ABCDEF";
  return std::string("the byte 0x") + digits[byte / 16U] + digits[byte % 16U];
}

}  // namespace

SmtLib2Lexer::SmtLib2Lexer(std::istream& in, std::string file_name, std::size_t buffer_bytes)
    : in_(in), file_name_(std::move(file_name)), buffer_(buffer_bytes + 1) {}

void SmtLib2Lexer::error(TextPosition position, const std::string& message) const {
  throw ReadError(file_name_, position, message);
}

void SmtLib2Lexer::error_expected(const std::string& expected) const {
  error(token_.position, "found " + describe(token_) + ", expected " + expected);
}

void SmtLib2Lexer::error_here(const std::string& message) const {
  error(position_of(cursor_), message);
}

void SmtLib2Lexer::error_malformed(const std::string& expected) {
  scan_run(class_symbol);
  finish(TokenKind::symbol, 0, 0);
  constexpr std::size_t shown_bytes = 60;
  std::string shown(token_.raw.substr(0, shown_bytes));
  if (token_.raw.size() > shown_bytes)
    shown += "...";
  error(token_.position, "found " + shown + ", expected " + expected);
}

TextPosition SmtLib2Lexer::position_of(std::size_t index) const {
  return {line_, offset_of_buffer_ + index - offset_of_line_ + 1};
}

void SmtLib2Lexer::count_line_feed() {
  ++line_;
  offset_of_line_ = offset_of_buffer_ + cursor_ + 1;
}

bool SmtLib2Lexer::refill() {
  if (at_end_)
    return false;
  if (token_start_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + token_start_, filled_ - token_start_);
    offset_of_buffer_ += token_start_;
    cursor_ -= token_start_;
    filled_ -= token_start_;
    token_start_ = 0;
  } else if (filled_ + 1 == buffer_.size()) {
    buffer_.resize(2 * buffer_.size());
  }
  in_.read(buffer_.data() + filled_, static_cast<std::streamsize>(buffer_.size() - 1 - filled_));
  const auto got = static_cast<std::size_t>(in_.gcount());
  if (in_.bad())
    throw Exception("cannot read " + file_name_);
  filled_ += got;
  buffer_[filled_] = '\0';
  at_end_ = got == 0;
  return got != 0;
}

void SmtLib2Lexer::skip_comment() {
  while (available()) {
    const char* from = buffer_.data() + cursor_;
    const std::size_t length = filled_ - cursor_;
    const auto* line_feed = static_cast<const char*>(std::memchr(from, '\n', length));
    const std::size_t run =
        line_feed == nullptr ? length : static_cast<std::size_t>(line_feed - from);
    const auto* nul = static_cast<const char*>(std::memchr(from, '\0', run));
    if (nul != nullptr) {
      cursor_ += static_cast<std::size_t>(nul - from);
      error_here("found a NUL byte, expected the rest of a comment");
    }
    cursor_ += run;
    token_start_ = cursor_;
    if (line_feed != nullptr)
      return;
  }
}

void SmtLib2Lexer::skip_blanks_and_comments() {
  while (true) {
    const char c = buffer_[cursor_];
    if (c == '\n') {
      count_line_feed();
      ++cursor_;
    } else if (is_of(c, class_blank)) {
      ++cursor_;
    } else if (c == ';') {
      token_start_ = cursor_;
      skip_comment();
    } else if (cursor_ == filled_) {
      token_start_ = cursor_;
      if (!refill())
        return;
    } else {
      return;
    }
  }
}

void SmtLib2Lexer::scan_run(unsigned char classes) {
  do {
    const char* p = buffer_.data() + cursor_;
    while (is_of(*p, classes))
      ++p;
    cursor_ = static_cast<std::size_t>(p - buffer_.data());
  } while (cursor_ == filled_ && refill());
}

void SmtLib2Lexer::finish(TokenKind kind, std::size_t skip_front, std::size_t skip_back) {
  const std::string_view raw(buffer_.data() + token_start_, cursor_ - token_start_);
  token_.kind = kind;
  token_.raw = raw;
  token_.text = raw.substr(skip_front, raw.size() - skip_front - skip_back);
}

const Token& SmtLib2Lexer::next() {
  if (pushed_back_) {
    pushed_back_ = false;
    return token_;
  }
  skip_blanks_and_comments();
  token_start_ = cursor_;
  token_.quoted = false;
  token_.position = position_of(cursor_);
  if (cursor_ == filled_) {
    finish(TokenKind::end, 0, 0);
    return token_;
  }
  const char c = buffer_[cursor_];
  switch (c) {
    case '(':
      ++cursor_;
      finish(TokenKind::left_bracket, 0, 0);
      break;
    case ')':
      ++cursor_;
      finish(TokenKind::right_bracket, 0, 0);
      break;
    case '|':
      scan_quoted_symbol();
      break;
    case '"':
      scan_string();
      break;
    case '#':
      scan_radix_constant();
      break;
    case ':':
      scan_keyword();
      break;
    default:
      if (is_of(c, class_digit)) {
        scan_number();
      } else if (is_of(c, class_symbol)) {
        scan_simple_symbol();
      } else if (c == '\0') {
        error_here("found a NUL byte, expected text");
      } else {
        error_here("found " + describe_byte(c) + ", expected the beginning of a token");
      }
  }
  return token_;
}

void SmtLib2Lexer::scan_simple_symbol() {
  scan_run(class_symbol);
  finish(TokenKind::symbol, 0, 0);
}

void SmtLib2Lexer::scan_keyword() {
  ++cursor_;
  scan_run(class_symbol);
  finish(TokenKind::keyword, 1, 0);
  if (token_.text.empty())
    error_malformed("a keyword");
}

void SmtLib2Lexer::scan_number() {
  scan_run(class_digit);
  const bool leading_zero = buffer_[token_start_] == '0' && cursor_ > token_start_ + 1;
  if (leading_zero)
    error_malformed("a numeral without leading zeros");
  if (buffer_[cursor_] != '.') {
    if (is_of(buffer_[cursor_], class_symbol))
      error_malformed("a numeral");
    finish(TokenKind::numeral, 0, 0);
    return;
  }
  ++cursor_;
  const std::size_t fraction = cursor_ - token_start_;
  scan_run(class_digit);
  if (cursor_ - token_start_ == fraction || is_of(buffer_[cursor_], class_symbol)) {
    error_malformed("a decimal");
  }
  finish(TokenKind::decimal, 0, 0);
}

void SmtLib2Lexer::scan_radix_constant() {
  ++cursor_;
  const char radix = available() ? buffer_[cursor_] : '\0';
  if (radix != 'x' && radix != 'b')
    error_malformed("#x or #b and digits");
  ++cursor_;
  scan_run(radix == 'x' ? class_hexadecimal : class_binary);
  const bool empty = cursor_ - token_start_ == 2;
  if (empty || is_of(buffer_[cursor_], class_symbol)) {
    error_malformed(radix == 'x' ? "#x and hexadecimal digits" : "#b and binary digits");
  }
  finish(radix == 'x' ? TokenKind::hexadecimal : TokenKind::binary, 2, 0);
}

void SmtLib2Lexer::scan_quoted_symbol() {
  ++cursor_;
  while (true) {
    scan_run(class_in_bars);
    if (cursor_ == filled_) {
      error(token_.position,
            "found the end of the input, expected the closing bar of a quoted symbol");
    }
    const char c = buffer_[cursor_];
    if (c == '|')
      break;
    if (c == '\\')
      error_here("found a backslash, expected the rest of a quoted symbol");
    if (c == '\0')
      error_here("found a NUL byte, expected the rest of a quoted symbol");
    count_line_feed();
    ++cursor_;
  }
  ++cursor_;
  finish(TokenKind::symbol, 1, 1);
  token_.quoted = true;
}

void SmtLib2Lexer::scan_string() {
  ++cursor_;
  while (true) {
    scan_run(class_in_string);
    if (cursor_ == filled_) {
      error(token_.position,
            "found the end of the input, expected the closing quotation mark of a string");
    }
    const char c = buffer_[cursor_];
    if (c == '\0')
      error_here("found a NUL byte, expected the rest of a string");
    if (c == '\n')
      count_line_feed();
    ++cursor_;
    if (c == '"' && !(available() && buffer_[cursor_] == '"'))
      break;
    if (c == '"')
      ++cursor_;
  }
  finish(TokenKind::string, 1, 1);
}

}  // namespace brum
