#ifndef BRUM_READERS_BYTE_CLASSES_H
#define BRUM_READERS_BYTE_CLASSES_H

#include <array>
#include <cstddef>
#include <string_view>

namespace brum {

/// For each byte, by its unsigned value, the classes that it is in, as bits. NUL is in none, so
/// that every run ends at the NUL behind the text in a lexer's buffer.
using ByteClasses = std::array<unsigned char, 256>;

// The classes that both versions of SMT-LIB have; which bytes are in them differs.
inline constexpr unsigned char class_digit = 1;
inline constexpr unsigned char class_symbol = 2;  // may stand in a symbol, digits included

inline constexpr std::string_view decimal_digits = "0123456789";
inline constexpr std::string_view ascii_letters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

/// Puts each of these bytes into the given classes too.
constexpr void add_to_classes(ByteClasses& table, std::string_view bytes, unsigned char classes) {
  for (const char c : bytes)
    table[static_cast<unsigned char>(c)] |= classes;
}

/// Puts every byte but NUL and the given ones into the given classes too.
constexpr void add_others_to_classes(ByteClasses& table, std::string_view left_out,
                                     unsigned char classes) {
  for (std::size_t c = 1; c < table.size(); ++c) {
    if (left_out.find(static_cast<char>(c)) == std::string_view::npos)
      table[c] |= classes;
  }
}

/// Whether a byte is in one of these classes.
constexpr bool is_of(const ByteClasses& table, char c, unsigned char classes) {
  return (table[static_cast<unsigned char>(c)] & classes) != 0;
}

}  // namespace brum

#endif  // BRUM_READERS_BYTE_CLASSES_H
