#include "message_text.h"

#include <algorithm>
#include <cstddef>

#include "utf8.h"

namespace brum::tools {

namespace {

std::string escape_of(unsigned char byte) {
  switch (byte) {
    case '\t':
      return "\\t";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    default:
      break;
  }
  constexpr std::string_view digits = "0123456789abcdef";
  return std::string("\\x") + digits[byte >> 4U] + digits[byte & 0xFU];
}

bool is_inside_character(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Moves a place where a text is to be cut to the beginning of the character that it is in.
std::size_t beginning_of_character(std::string_view text, std::size_t place) {
  constexpr std::size_t most_bytes_inside = 3;
  std::size_t begin = place;
  while (begin > 0 && place - begin < most_bytes_inside && is_inside_character(text[begin])) {
    --begin;
  }
  return begin + utf8_length(text.substr(begin)) > place ? begin : place;
}

}  // namespace

std::string message_text(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::size_t length = std::max<std::size_t>(1, utf8_length(text));
    const std::string_view character = text.substr(0, length);
    if (is_shown(character)) {
      shown += character;
    } else {
      for (const char byte : character) {
        shown += escape_of(static_cast<unsigned char>(byte));
      }
    }
    text.remove_prefix(length);
  }
  return shown;
}

std::string short_message_text(std::string_view text) {
  constexpr std::size_t most = 1000;
  constexpr std::size_t before = 700;
  if (text.size() <= most) {
    return message_text(text);
  }
  const std::size_t first_end = beginning_of_character(text, before);
  const std::size_t second = beginning_of_character(text, text.size() - (most - before));
  return message_text(text.substr(0, first_end)) + "..." + message_text(text.substr(second));
}

}  // namespace brum::tools
