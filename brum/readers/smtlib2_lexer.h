#ifndef BRUM_READERS_SMTLIB2_LEXER_H
#define BRUM_READERS_SMTLIB2_LEXER_H

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "brum/readers/read_error.h"
#include "brum/readers/token.h"

namespace brum {

/// Cuts SMT-LIB 2.6 text into tokens, reading the stream block by block.
///
/// Memory is one buffer, which grows only for a token that is longer than it. Blanks and comments
/// are skipped. Beyond the standard, any byte but NUL may stand in comments and strings, and any
/// but NUL, bar and backslash in a quoted symbol, so that whatever name a printer puts between
/// bars can be read back.
class SmtLib2Lexer {
 public:
  /// Reads from `in`, which must outlive the lexer; `file_name` is for error messages.
  SmtLib2Lexer(std::istream& in, std::string file_name, std::size_t buffer_bytes = 1U << 18U);

  /// Gives the next token, at the end of the input one of kind `end`. It holds until the next call.
  /// Throws ReadError for text that is no token, Exception when the stream cannot be read.
  const Token& next();

  /// The token that next() gave last.
  const Token& token() const { return token_; }

  /// Makes the next call of next() give the same token again.
  void push_back() { pushed_back_ = true; }

  /// Throws a ReadError at a place in this input.
  [[noreturn]] void error(TextPosition position, const std::string& message) const;

  /// Throws a ReadError at the last token: `found TOKEN, expected EXPECTED`.
  [[noreturn]] void error_expected(const std::string& expected) const;

 private:
  void skip_blanks_and_comments();
  void skip_comment();
  void scan_number();
  void scan_radix_constant();
  void scan_simple_symbol();
  void scan_keyword();
  void scan_quoted_symbol();
  void scan_string();

  /// Moves the cursor behind the longest run of bytes of these classes.
  void scan_run(unsigned char classes);

  /// Ends the token at the cursor; its text is what remains between `skip_front` bytes at its
  /// beginning and `skip_back` at its end.
  void finish(TokenKind kind, std::size_t skip_front, std::size_t skip_back);

  /// Whether a byte is there at the cursor, read from the stream if need be. Bytes from
  /// token_start_ on are kept.
  bool available() { return cursor_ < filled_ || refill(); }
  bool refill();

  void count_line_feed();
  TextPosition position_of(std::size_t index) const;
  [[noreturn]] void error_here(const std::string& message) const;
  [[noreturn]] void error_malformed(const std::string& expected);

  std::istream& in_;
  std::string file_name_;
  std::vector<char> buffer_;  // one byte longer than what may be filled, for a NUL behind the text
  std::size_t filled_ = 0;
  std::size_t cursor_ = 0;
  std::size_t token_start_ = 0;
  std::size_t offset_of_buffer_ = 0;  // bytes of the input before buffer_[0]
  std::size_t offset_of_line_ = 0;    // bytes of the input before the line of the cursor
  std::size_t line_ = 1;
  bool at_end_ = false;
  bool pushed_back_ = false;
  Token token_;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB2_LEXER_H
