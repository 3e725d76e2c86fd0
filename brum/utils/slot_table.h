#ifndef BRUM_UTILS_SLOT_TABLE_H
#define BRUM_UTILS_SLOT_TABLE_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "brum/utils/hash.h"
#include "brum/utils/large_array.h"

namespace brum {

/// A hash table whose entries lie in its slots, side by side with their keys: to find one mostly
/// takes a look at one cache line. Entries stay until the table goes.
///
/// `Entry` is a trivial type, a pointer or a few words. A key is a number other than 0 which equal
/// entries have in common and others hardly ever.
template <class Entry>
class SlotTable {
  static_assert(std::is_trivial_v<Entry>);

 public:
  /// Gives the entry that has this key and for which `is_it(entry)` holds; if it is not there yet,
  /// the one that `make()` returns goes in. It stays where it is until the next call. Throws
  /// std::bad_alloc and what `make` throws, and then changes nothing.
  template <class IsIt, class Make>
  Entry& get(std::uint64_t key, const IsIt& is_it, const Make& make) {
    if (num_entries_ * 2 >= slots_.size()) {
      grow();
    }
    Slot& slot = slots_[index_for(key, is_it)];
    if (slot.key == 0) {
      slot = {key, make()};
      ++num_entries_;
    }
    return slot.entry;
  }

  /// Gives the entry that has this key and for which `is_it(entry)` holds, null if there is none.
  /// It stays where it is until the next call of get().
  template <class IsIt>
  const Entry* find(std::uint64_t key, const IsIt& is_it) const {
    if (num_entries_ == 0) {
      return nullptr;
    }
    const Slot& slot = slots_[index_for(key, is_it)];
    return slot.key == 0 ? nullptr : &slot.entry;
  }

  /// Fetches into the cache the slots where the entry with this key lies or will lie. Only for a
  /// table that has entries, and from `make` on: before, it may have no slots.
  [[gnu::always_inline]] void prefetch(std::uint64_t key) const noexcept {
    __builtin_prefetch(&slots_[first_slot(key, slots_.size() - 1)]);
  }

  /// Calls `visit(entry)` for every entry.
  template <class Visit>
  void for_each(const Visit& visit) const {
    for (const Slot& slot : slots_) {
      if (slot.key != 0) {
        visit(slot.entry);
      }
    }
  }

 private:
  struct Slot {
    std::uint64_t key;  // 0 where the slot is empty
    Entry entry;
  };

  static constexpr std::size_t smallest_size = 256;

  /// Keys that differ only in the last two bits get slots side by side.
  static std::size_t first_slot(std::uint64_t key, std::size_t mask) noexcept {
    return (hsh::mix(key >> 2U, hsh::first_mixer) << 2U | (key & 3U)) & mask;
  }

  /// Gives the place of the entry, or the empty one where it would be.
  template <class IsIt>
  std::size_t index_for(std::uint64_t key, const IsIt& is_it) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t index = first_slot(key, mask);
    while (slots_[index].key != 0 && (slots_[index].key != key || !is_it(slots_[index].entry))) {
      index = (index + 1) & mask;
    }
    return index;
  }

  void grow() {
    LargeArray<Slot> larger(std::max(smallest_size, slots_.size() * 2));
    const std::size_t mask = larger.size() - 1;
    for (const Slot& slot : slots_) {
      if (slot.key != 0) {
        std::size_t index = first_slot(slot.key, mask);
        while (larger[index].key != 0) {
          index = (index + 1) & mask;
        }
        larger[index] = slot;
      }
    }
    slots_ = std::move(larger);
  }

  LargeArray<Slot> slots_;  // their number is 0 or a power of two; half of them are empty
  std::size_t num_entries_ = 0;
};

}  // namespace brum

#endif  // BRUM_UTILS_SLOT_TABLE_H
