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
/// bytes of its text lie right behind it; its hash is in the table, so that a search hardly ever
/// touches another entry than the right one.
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
    const std::uint64_t hash = hash_of(text);
    Slot& slot = slots_[find_slot(text, hash)];
    if (slot.entry == nullptr) {
      slot = {hash, make_entry(text)};
      ++num_entries_;
    }
    return *slot.entry;
  }

 private:
  struct Slot {
    std::uint64_t hash;
    Entry* entry;  // null where the slot is empty
  };

  static constexpr std::size_t smallest_size = 256;

  /// Texts that differ only in the last two bits get slots side by side, in one cache line:
  /// programs count through the names that they write, so the next one is often looked for there.
  static std::uint64_t hash_of(std::string_view text) noexcept {
    if (text.empty()) {
      return 0;
    }
    const std::uint64_t last = static_cast<unsigned char>(text.back());
    text.remove_suffix(1);
    return (hsh::hash_bytes(text) + (last >> 2U) * hsh::second_mixer) << 2U | (last & 3U);
  }

  /// Gives the slot of the entry with this text, or the empty one where it belongs.
  std::size_t find_slot(std::string_view text, std::uint64_t hash) const noexcept {
    const std::size_t mask = slots_.size() - 1;
    std::size_t index = hash & mask;
    while (slots_[index].entry != nullptr &&
           (slots_[index].hash != hash || slots_[index].entry->text != text)) {
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
        std::size_t index = slot.hash & mask;
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
