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
    : in_(in),
      file_name_(std::move(file_name)),
      buffer_(buffer_bytes + 1),
      token_start_(buffer_.data()),
      cursor_(buffer_.data()),
      end_(buffer_.data()) {}

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
  // What was read of the token goes to the beginning of the buffer; for one that fills it the
  // buffer grows.
  const std::size_t before = distance(buffer_.data(), token_start_);
  const std::size_t scanned = token_bytes();
  const std::size_t kept = distance(token_start_, end_);
  if (before > 0) {
    std::memmove(buffer_.data(), token_start_, kept);
    column_of_buffer_ += before;
  } else if (kept + 1 == buffer_.size()) {
    buffer_.resize(2 * buffer_.size());
  }
  char* const place = buffer_.data() + kept;
  token_start_ = buffer_.data();
  cursor_ = token_start_ + scanned;
  end_ = place;
  in_.read(place, static_cast<std::streamsize>(buffer_.size() - 1 - kept));
  const auto got = static_cast<std::size_t>(in_.gcount());
  if (in_.bad())
    throw Exception("cannot read " + file_name_);
  place[got] = '\0';
  end_ += got;
  at_end_ = got == 0;
  return got != 0;
}

void LexerBuffer::skip_comment() {
  while (available()) {
    const auto* const line_feed =
        static_cast<const char*>(std::memchr(cursor_, '\n', distance(cursor_, end_)));
    const char* const last = line_feed == nullptr ? end_ : line_feed;
    const auto* const nul =
        static_cast<const char*>(std::memchr(cursor_, '\0', distance(cursor_, last)));
    if (nul != nullptr) {
      cursor_ = nul;
      error_here("found a NUL byte, expected the rest of a comment");
    }
    cursor_ = last;
    token_start_ = cursor_;
    if (line_feed != nullptr)
      return;
  }
}

void LexerBuffer::skip_blanks_comments_and_line_ends() {
  while (true) {
    skip_blanks();
    const char c = current();
    if (c == '\n') {
      advance_over_line_feed();
    } else if (c == ';') {
      token_start_ = cursor_;
      skip_comment();
    } else if (at_end_of_buffer()) {
      token_start_ = cursor_;
      if (!refill())
        return;
    } else {
      return;
    }
  }
}

}  // namespace brum
