#ifndef BRUM_READERS_LEXER_BUFFER_H
#define BRUM_READERS_LEXER_BUFFER_H

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "brum/readers/byte_classes.h"
#include "brum/readers/read_error.h"
#include "brum/readers/token.h"

namespace brum {

/// What the lexers of both versions of SMT-LIB share: the text, read from its stream block by
/// block, the place in it, and the token that was cut out last.
///
/// Memory is one buffer, which grows only for a token that is longer than it.
class LexerBuffer {
 public:
  /// Reads from `in`, which must outlive the lexer; `file_name` is for error messages.
  LexerBuffer(std::istream& in, std::string file_name, std::size_t buffer_bytes);
  LexerBuffer(const LexerBuffer&) = delete;
  LexerBuffer& operator=(const LexerBuffer&) = delete;

  /// The token that next() of the lexer gave last.
  const Token& token() const { return token_; }

  /// Makes the next call of next() give the same token again.
  void push_back() { pushed_back_ = true; }

  /// Throws a ReadError at a place in this input.
  [[noreturn]] void error(TextPosition position, const std::string& message) const;

  /// Throws a ReadError at the last token: `found TOKEN, expected EXPECTED`.
  [[noreturn]] void error_expected(const std::string& expected) const;

 protected:
  /// The byte at the cursor; NUL at the end of the text in the buffer.
  char current() const { return *cursor_; }

  /// Whether the cursor stands at the end of the text in the buffer.
  bool at_end_of_buffer() const { return cursor_ == end_; }

  /// Moves the cursor over a byte, which must not be a line feed.
  void advance() { ++cursor_; }
  void advance_over_line_feed() {
    ++line_;
    ++cursor_;
    column_of_buffer_ = 1 - distance(buffer_.data(), cursor_);
  }

  /// Moves the cursor behind the longest run of bytes of some of these classes.
  template <const ByteClasses& classes_of_bytes>
  void scan_run(unsigned char classes) {
    do {
      const char* p = cursor_;
      while ((classes_of_bytes[static_cast<unsigned char>(*p)] & classes) != 0)
        ++p;
      cursor_ = p;
    } while (cursor_ == end_ && refill());
  }

  /// Moves the cursor over blanks, line ends and comments from `;` to the end of a line.
  void skip_blanks_and_comments() {
    skip_blanks();
    // What else is skipped is below the exclamation mark, or a semicolon.
    if (static_cast<unsigned char>(current()) < '!' || current() == ';') {
      skip_blanks_comments_and_line_ends();
    }
  }

  /// Begins a token at the cursor.
  void begin_token() {
    token_start_ = cursor_;
    token_.quoted = false;
    token_.position = position_of_cursor();
  }

  /// Ends the token at the cursor; its text is what remains between `skip_front` bytes at its
  /// beginning and `skip_back` at its end.
  void finish(TokenKind kind, std::size_t skip_front, std::size_t skip_back) {
    const std::string_view raw(token_start_, token_bytes());
    token_.kind = kind;
    token_.raw = raw;
    token_.text = raw.substr(skip_front, raw.size() - skip_front - skip_back);
  }

  /// The number of bytes from the beginning of the token to the cursor, and the first of them.
  std::size_t token_bytes() const { return distance(token_start_, cursor_); }
  char first_byte() const { return *token_start_; }

  /// Whether a byte is there at the cursor, read from the stream if need be. Bytes from the
  /// beginning of the token on are kept.
  bool available() { return cursor_ != end_ || refill(); }

  /// Throw a ReadError at the cursor, or for the token that ends there.
  [[noreturn]] void error_here(const std::string& message) const;
  [[noreturn]] void error_at_byte() const;
  [[noreturn]] void error_malformed(const std::string& expected);

  Token token_;
  bool pushed_back_ = false;

 private:
  void skip_blanks() {
    const char* p = cursor_;
    // Most bytes that are none are told by one comparison.
    while (static_cast<unsigned char>(*p) <= ' ' && (*p == ' ' || *p == '\t' || *p == '\r')) {
      ++p;
    }
    cursor_ = p;
  }
  void skip_blanks_comments_and_line_ends();
  void skip_comment();
  bool refill();
  TextPosition position_of_cursor() const {
    return {line_, column_of_buffer_ + distance(buffer_.data(), cursor_)};
  }
  static std::size_t distance(const char* from, const char* to) {
    return static_cast<std::size_t>(to - from);
  }

  std::istream& in_;
  std::string file_name_;
  std::vector<char> buffer_;  // one byte longer than what may be filled, for a NUL behind the text
  const char* token_start_;
  const char* cursor_;
  const char* end_;  // of the text, where there is a NUL

  // The column that the first byte of the buffer has in the line of the cursor. Where the line
  // begins within the buffer it is below 1: a number of columns modulo 2^64.
  std::size_t column_of_buffer_ = 1;
  std::size_t line_ = 1;
  bool at_end_ = false;
};

}  // namespace brum

#endif  // BRUM_READERS_LEXER_BUFFER_H
