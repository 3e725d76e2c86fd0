#ifndef BRUM_READERS_TEXT_KEY_H
#define BRUM_READERS_TEXT_KEY_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "brum/utils/hash.h"

namespace brum {

/// Keys by which a SlotTable finds texts: never 0, and hardly ever the same for two texts.
///
/// A text of up to `longest_short_text` bytes is its own key, so that equal keys are equal texts:
/// its bytes, the last one lowest, and above them its length and 1. The key of a long one is a hash
/// of it. Both suit programs that count through the names that they write. Texts that differ only
/// in the last two bits have keys that do so too and get slots side by side, so that the next name
/// is often looked for on the same cache line; and where it leaves that line can be told.
class TextKey {
 public:
  static constexpr std::size_t longest_short_text = 7;

  /// Gives the key of a text.
  static std::uint64_t of(std::string_view text) noexcept {
    return text.size() <= longest_short_text ? of_short(text) : of_long(text);
  }

  /// Gives the key of the next name to have its slot elsewhere when a program counts on from
  /// `text`, whose key is `key`: its last digit is 4, 8, or 0 in the next ten. Any key where `text`
  /// does not end with two digits or the next ten begins a hundred.
  static std::uint64_t ahead(std::string_view text, std::uint64_t key) noexcept {
    constexpr char first_of_last_group = '8';
    constexpr std::uint64_t next_ten = 0x100 + '0' - first_of_last_group;
    const bool ends_ten = !text.empty() && text.back() >= first_of_last_group;
    const std::uint64_t step = ends_ten ? next_ten : group_size;
    return key >= long_mark ? long_mark | (key + step * hsh::second_mixer) : key + step;
  }

 private:
  static constexpr unsigned length_shift = 56;  // above the bytes of a short text
  static constexpr std::uint64_t long_mark = ~std::uint64_t{0} << length_shift;
  static constexpr std::uint64_t group_size = 4;  // of keys that get slots side by side

  static std::uint64_t of_short(std::string_view text) noexcept {
    const std::uint64_t mark = text.size() + 1;
    return mark << length_shift | bytes_of(text);
  }

  /// What counts is the last two bytes, so the hash of the others is moved on by them.
  static std::uint64_t of_long(std::string_view text) noexcept {
    const std::uint64_t end = bytes_of(text.substr(text.size() - 2));
    const std::uint64_t place = end % group_size;
    text.remove_suffix(2);
    const std::uint64_t hash = hsh::hash_bytes(text) * group_size;
    return long_mark | (hash + (end - place) * hsh::second_mixer) | place;
  }

  /// The bytes of a short text, the last one lowest. Read in pieces that overlap, which agree where
  /// they do: that takes the same few steps for many lengths.
  static std::uint64_t bytes_of(std::string_view text) noexcept {
    const std::size_t size = text.size();
    if (size >= 4) {
      return four_bytes(text.data()) << 8U * (size - 4) | four_bytes(text.data() + size - 4);
    }
    if (size == 0) {
      return 0;
    }
    const std::size_t middle = size / 2;
    return byte_at(text.data()) << 8U * (size - 1) |
           byte_at(text.data() + middle) << 8U * (size - 1 - middle) |
           byte_at(text.data() + size - 1);
  }
  static std::uint64_t byte_at(const char* place) noexcept {
    return static_cast<unsigned char>(*place);
  }
  static std::uint64_t four_bytes(const char* first) noexcept {
    return byte_at(first) << 24U | byte_at(first + 1) << 16U | byte_at(first + 2) << 8U |
           byte_at(first + 3);
  }
};

}  // namespace brum

#endif  // BRUM_READERS_TEXT_KEY_H
