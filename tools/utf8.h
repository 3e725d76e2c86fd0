#ifndef BRUM_TOOLS_UTF8_H
#define BRUM_TOOLS_UTF8_H

#include <cstddef>
#include <string_view>

namespace brum::tools {

/// Gives the number of bytes of the UTF-8 character that `text` begins with, 1 to 4; 0 where it
/// begins with none.
inline std::size_t utf8_length(std::string_view text) {
  if (text.empty()) {
    return 0;
  }
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  std::size_t length = 0;
  unsigned lowest = 0x80;   // of the second byte: shorter forms, surrogates and
  unsigned highest = 0xBF;  // numbers beyond the last character are none
  if (first < 0x80) {
    return 1;
  }
  if (first >= 0xC2 && first <= 0xDF) {
    length = 2;
  } else if (first >= 0xE0 && first <= 0xEF) {
    length = 3;
    lowest = first == 0xE0 ? 0xA0 : lowest;
    highest = first == 0xED ? 0x9F : highest;
  } else if (first >= 0xF0 && first <= 0xF4) {
    length = 4;
    lowest = first == 0xF0 ? 0x90 : lowest;
    highest = first == 0xF4 ? 0x8F : highest;
  }
  if (length == 0 || text.size() < length || byte(1) < lowest || byte(1) > highest) {
    return 0;
  }
  for (std::size_t i = 2; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) {
      return 0;
    }
  }
  return length;
}

/// Whether a terminal shows a character as such: not a control character, nor a byte that is in no
/// character of UTF-8. `character` is one of these, not empty.
inline bool is_shown(std::string_view character) {
  const auto first = static_cast<unsigned char>(character.front());
  const bool is_byte_of_none = character.size() == 1 && first >= 0x80;
  const bool is_control = first < 0x20 || first == 0x7F ||
                          (first == 0xC2 && static_cast<unsigned char>(character.back()) < 0xA0);
  return !is_byte_of_none && !is_control;
}

}  // namespace brum::tools

#endif  // BRUM_TOOLS_UTF8_H
