#ifndef BRUM_READERS_TEXT_TABLE_H
#define BRUM_READERS_TEXT_TABLE_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "brum/utils/hash.h"
#include "brum/utils/slot_table.h"

namespace brum {

/// Finds entries by their texts. Beside each entry the table keeps its text if that is short, else
/// a hash of it, so that a search hardly ever looks at another entry than the right one.
///
/// `Entry` is a trivial type, a pointer or a few words. `text_of(entry)` gives the text of an
/// entry; it is asked only for those of more than `longest_short_text` bytes.
template <class Entry>
class TextTable {
 public:
  static constexpr std::size_t longest_short_text = 7;

  /// Gives the entry with this text; if it is not there yet, the one that `make()` returns goes in.
  /// It stays where it is until the next call. Throws std::bad_alloc and what `make` throws, and
  /// then changes nothing.
  template <class Make>
  Entry& get(std::string_view text, const Make& make) {
    const auto is_it = [&](const Entry& entry) {
      return text.size() <= longest_short_text || text_of(entry) == text;
    };
    return entries_.get(key_of(text), is_it, make);
  }

 private:
  static constexpr unsigned length_bits = 56;  // the bits below the byte that says the length

  /// A short text is its own key, so that equal keys are equal texts: its bytes, the last one
  /// lowest, and above them its length and 1. The key of a long one is a hash of it, but for the
  /// two lowest bits, which are those of its last byte too. So texts that differ only there get
  /// slots side by side: programs count through the names that they write, and the next one is
  /// often looked for on the same cache line.
  static std::uint64_t key_of(std::string_view text) noexcept {
    if (text.size() > longest_short_text) {
      const std::uint64_t last = static_cast<unsigned char>(text.back());
      text.remove_suffix(1);
      const std::uint64_t hash = hsh::hash_bytes(text) + (last >> 2U) * hsh::second_mixer;
      return ~std::uint64_t{0} << length_bits | hash << 2U | (last & 3U);
    }
    const std::uint64_t length = text.size() + 1;
    return length << length_bits | bytes_of(text);
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

  SlotTable<Entry> entries_;
};

}  // namespace brum

#endif  // BRUM_READERS_TEXT_TABLE_H
