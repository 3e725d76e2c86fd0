#include "json_text.h"

#include "utf8.h"

namespace brum::tools {

namespace {

/// Gives one character as it stands in a string of JSON.
std::string json_character(std::string_view character) {
  if (character == "\"" || character == "\\") {
    return "\\" + std::string(character);
  }
  const auto byte = static_cast<unsigned char>(character.front());
  if (byte < 0x20) {
    constexpr std::string_view digits = "0123456789abcdef";
    return std::string("\\u00") + digits[byte >> 4U] + digits[byte & 0xFU];
  }
  return std::string(character);
}

}  // namespace

std::string json_string(std::string_view text) {
  std::string result = "\"";
  while (!text.empty()) {
    const std::size_t length = utf8_length(text);
    result += length == 0 ? "\xEF\xBF\xBD" : json_character(text.substr(0, length));
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return result + '"';
}

}  // namespace brum::tools
