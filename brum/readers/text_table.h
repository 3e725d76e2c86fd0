#ifndef BRUM_READERS_TEXT_TABLE_H
#define BRUM_READERS_TEXT_TABLE_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

#include "brum/terms/arena.h"
#include "brum/utils/hash.h"
#include "brum/utils/large_array.h"

namespace brum {

/// Keeps entries by their texts. An entry stays where it is as long as the table lives, and the
/// bytes of its text lie right behind it. A short text or the hash of a long one is in the table
/// too, so that a search hardly ever touches another entry than the right one.
///
/// `Entry` is trivially destructible, is made from nothing, and has a member `text`, a
/// std::string_view, which the table sets.
template <class Entry>
class TextTable {
  static_assert(std::is_trivially_destructible_v<Entry> && alignof(Entry) <= 8);

 public:
  /// Gives the entry with this text, made now if it is not there. Throws std::bad_alloc and then
  /// changes nothing.
  Entry& get(std::string_view text) {
    if (num_entries_ * 2 >= slots_.size()) {
      grow();
    }
    const std::uint64_t key = key_of(text);
    Slot& slot = slots_[find_slot(text, key)];
    if (slot.entry == nullptr) {
      slot = {key, make_entry(text)};
      ++num_entries_;
    }
    return *slot.entry;
  }

 private:
  struct Slot {
    std::uint64_t key;
    Entry* entry;  // null where the slot is empty
  };

  static constexpr std::size_t smallest_size = 256;
  static constexpr std::size_t longest_short_text = 7;
  static constexpr unsigned length_bits = 56;  // the bits below the byte that says the length

  /// A short text is its own key, so that equal keys are equal texts: its bytes, the last one
  /// lowest, and above them its length. The key of a long one is a hash of it, but for the two
  /// lowest bits, which are those of its last byte too.
  static std::uint64_t key_of(std::string_view text) noexcept {
    if (text.size() > longest_short_text) {
      const std::uint64_t last = static_cast<unsigned char>(text.back());
      text.remove_suffix(1);
      const std::uint64_t hash = hsh::hash_bytes(text) + (last >> 2U) * hsh::second_mixer;
      return ~std::uint64_t{0} << length_bits | hash << 2U | (last & 3U);
    }
    std::uint64_t bytes = 0;
    for (const char byte : text) {
      bytes = bytes << 8U | static_cast<unsigned char>(byte);
    }
    return std::uint64_t{text.size()} << length_bits | bytes;
  }

  /// Texts that differ only in the last two bits get slots side by side, in one cache line:
  /// programs count through the names that they write, so the next one is often looked for there.
  static std::size_t first_slot(std::uint64_t key, std::size_t mask) noexcept {
    return (hsh::mix(key >> 2U, hsh::first_mixer) << 2U | (key & 3U)) & mask;
  }

  /// Gives the slot of the entry with this text, or the empty one where it belongs.
  std::size_t find_slot(std::string_view text, std::uint64_t key) const noexcept {
    const std::size_t mask = slots_.size() - 1;
    std::size_t index = first_slot(key, mask);
    while (slots_[index].entry != nullptr &&
           (slots_[index].key != key ||
            (text.size() > longest_short_text && slots_[index].entry->text != text))) {
      index = (index + 1) & mask;
    }
    return index;
  }

  Entry* make_entry(std::string_view text) {
    void* const place = arena_.allocate(sizeof(Entry) + text.size());
    auto* const entry = new (place) Entry;
    char* const kept = static_cast<char*>(place) + sizeof(Entry);
    std::copy(text.begin(), text.end(), kept);
    entry->text = {kept, text.size()};
    return entry;
  }

  void grow() {
    LargeArray<Slot> larger(std::max(smallest_size, slots_.size() * 2));
    const std::size_t mask = larger.size() - 1;
    for (const Slot& slot : slots_) {
      if (slot.entry != nullptr) {
        std::size_t index = first_slot(slot.key, mask);
        while (larger[index].entry != nullptr) {
          index = (index + 1) & mask;
        }
        larger[index] = slot;
      }
    }
    slots_ = std::move(larger);
  }

  Arena arena_;
  LargeArray<Slot> slots_;  // their number is 0 or a power of two; half of them are empty
  std::size_t num_entries_ = 0;
};

}  // namespace brum

#endif  // BRUM_READERS_TEXT_TABLE_H
