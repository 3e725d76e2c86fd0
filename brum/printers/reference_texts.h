#ifndef BRUM_PRINTERS_REFERENCE_TEXTS_H
#define BRUM_PRINTERS_REFERENCE_TEXTS_H

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "brum/printers/copy_text.h"
#include "brum/terms/arena.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"
#include "brum/utils/large_array.h"
#include "brum/utils/large_memory.h"
#include "brum/utils/slot_table.h"

namespace brum {

/// The texts by which a document refers to those of its terms that several places refer to: mostly
/// labels and names. They are the document's own; a map that others see is a DefinitionMap.
///
/// A text is found by the term's id. It lies in a slot of 16 bytes if it has up to 15: to look at
/// it takes one cache line. Where the document holds a good part of the terms that were made up to
/// its newest, ids have slots without a search, on pages of 256 ids, which are made when one of
/// their terms gets a text. Where its terms are scattered over a large store, a table leads from
/// ids to slots, so that a document pays for its own terms and not for the store.
class BRUM_EXPORT ReferenceTexts {
 public:
  ReferenceTexts() = default;
  ReferenceTexts(const ReferenceTexts&) = delete;
  ReferenceTexts& operator=(const ReferenceTexts&) = delete;

  /// Makes ready for a document of `num_terms` terms with ids up to `highest_id`, before any of
  /// them gets a text. Throws std::bad_alloc.
  void expect_terms(std::size_t num_terms, std::uint64_t highest_id) {
    are_scattered_ = highest_id / most_ids_a_term > num_terms;
    if (!are_scattered_) {
      pages_ = LargeArray<Slot*>(highest_id / page_size + 1);
    }
  }

  /// Keeps a copy of the text of a term that has none yet. Throws std::bad_alloc and then changes
  /// nothing.
  void insert(const Term* term, std::string_view text) {
    Slot& slot = slot_to_fill(term);
    if (text.size() <= longest_inside) {
      copy_text(slot.bytes.data(), text.data(), text.size());
      slot.size = static_cast<std::uint8_t>(text.size());
    } else {
      insert_long(slot, text);
    }
  }

  /// Gives the text of a term that has one; it stays as long as this object.
  std::string_view get(const Term* term) const {
    const Slot& slot = filled_slot(term);
    return slot.size == elsewhere ? long_text(slot)
                                  : std::string_view(slot.bytes.data(), slot.size);
  }

  /// Fetches into the cache where the text of `term` lies if it has one, or is to lie.
  [[gnu::always_inline]] void prefetch(const Term* term) const {
    const Slot* const page = are_scattered_ ? nullptr : pages_[term->id / page_size];
    if (page != nullptr) {
      __builtin_prefetch(page + term->id % page_size);
    }
  }

 private:
  /// Of this many terms of the store one is the document's, or they are scattered.
  static constexpr std::uint64_t most_ids_a_term = 16;

  static constexpr std::size_t page_size = 256;
  static constexpr std::size_t longest_inside = 15;
  static constexpr std::uint8_t elsewhere = 255;

  /// A text of up to 15 bytes, or where a longer one lies behind its length.
  struct alignas(16) Slot {
    std::array<char, longest_inside> bytes;
    std::uint8_t size;  // or `elsewhere`
  };

  Slot& slot_to_fill(const Term* term) {
    if (are_scattered_) [[unlikely]] {
      return add_scattered(term);
    }
    Slot*& page = pages_[term->id / page_size];
    if (page == nullptr) [[unlikely]] {
      page = make_page();
    }
    return page[term->id % page_size];
  }

  const Slot& filled_slot(const Term* term) const {
    if (are_scattered_) [[unlikely]] {
      return find_scattered(term);
    }
    assert(pages_[term->id / page_size] != nullptr);
    return pages_[term->id / page_size][term->id % page_size];
  }

  Slot& add_scattered(const Term* term);
  const Slot& find_scattered(const Term* term) const;
  Slot* make_page();
  void insert_long(Slot& slot, std::string_view text);
  static std::string_view long_text(const Slot& slot);

  bool are_scattered_ = false;
  LargeArray<Slot*> pages_;           // where terms are not scattered; ...
  SlotTable<Slot*> scattered_;        // ... where they are, by id
  Slot* next_scattered_ = nullptr;    // the first free one for them, ...
  Slot* end_of_scattered_ = nullptr;  // ... which is this when a page has to be made
  std::vector<LargeBlock> chunks_;    // of pages
  std::size_t used_bytes_ = 0;        // of the last chunk
  Arena long_texts_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_REFERENCE_TEXTS_H
