#include "brum/readers/lexer_buffer.h"

#include <cstring>
#include <utility>

namespace brum {

namespace {

std::string describe_byte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte > 0x20 && byte < 0x7F)
    return std::string("the character ") + c;
  constexpr std::string_view digits = "0123456789ABCDEF";
  return std::string("the byte 0x") + digits[byte / 16U] + digits[byte % 16U];
}

}  // namespace

LexerBuffer::LexerBuffer(std::istream& in, std::string file_name, std::size_t buffer_bytes)
    : in_(in), file_name_(std::move(file_name)), buffer_(buffer_bytes + 1) {}

// Errors.

void LexerBuffer::error(TextPosition position, const std::string& message) const {
  throw ReadError(file_name_, position, message);
}

void LexerBuffer::error_expected(const std::string& expected) const {
  error(token_.position, "found " + describe(token_) + ", expected " + expected);
}

void LexerBuffer::error_here(const std::string& message) const {
  error(position_of_cursor(), message);
}

void LexerBuffer::error_at_byte() const {
  if (current() == '\0')
    error_here("found a NUL byte, expected text");
  error_here("found " + describe_byte(current()) + ", expected the beginning of a token");
}

void LexerBuffer::error_malformed(const std::string& expected) {
  finish(TokenKind::symbol, 0, 0);
  constexpr std::size_t shown_bytes = 60;
  std::string shown(token_.raw.substr(0, shown_bytes));
  if (token_.raw.size() > shown_bytes)
    shown += "...";
  error(token_.position, "found " + shown + ", expected " + expected);
}

// The text.

bool LexerBuffer::refill() {
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

void LexerBuffer::skip_comment() {
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

void LexerBuffer::skip_blanks_comments_and_line_ends() {
  while (true) {
    skip_blanks();
    const char c = buffer_[cursor_];
    if (c == '\n') {
      advance_over_line_feed();
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

}  // namespace brum
