#ifndef BRUM_READERS_TEXT_TABLE_H
#define BRUM_READERS_TEXT_TABLE_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "brum/readers/text_key.h"
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
  static constexpr std::size_t longest_short_text = TextKey::longest_short_text;

  /// Gives the entry with this text; if it is not there yet, the one that `make()` returns goes in.
  /// It stays where it is until the next call. Throws std::bad_alloc and what `make` throws, and
  /// then changes nothing.
  template <class Make>
  Entry& get(std::string_view text, const Make& make) {
    const std::uint64_t key = TextKey::of(text);
    const auto is_it = [&](const Entry& entry) {
      return text.size() <= longest_short_text || text_of(entry) == text;
    };
    return entries_.get(key, is_it, [&] {
      // A new name is mostly followed by the next one soon.
      entries_.prefetch(TextKey::ahead(text, key));
      return make();
    });
  }

 private:
  SlotTable<Entry> entries_;
};

}  // namespace brum

#endif  // BRUM_READERS_TEXT_TABLE_H
