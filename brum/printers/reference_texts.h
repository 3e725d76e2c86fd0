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

namespace brum {

/// The texts by which a document refers to those of its terms that several places refer to: mostly
/// labels and names. They are the document's own; a map that others see is a DefinitionMap.
///
/// A text is found by the term's id, without a search. Ids have slots of 16 bytes, which hold a
/// text of up to 15: to look at it takes one cache line. Slots lie on pages of 256 ids, which are
/// made when one of their terms gets a text, so that a document pays for its own terms and not for
/// the store: beyond the pages there is one word per 256 ids up to the highest one.
class BRUM_EXPORT ReferenceTexts {
 public:
  ReferenceTexts() = default;
  ReferenceTexts(const ReferenceTexts&) = delete;
  ReferenceTexts& operator=(const ReferenceTexts&) = delete;

  /// Makes ready for terms with ids up to `highest_id`, before any of them gets a text. Throws
  /// std::bad_alloc.
  void expect_ids(std::uint64_t highest_id) {
    pages_ = LargeArray<Slot*>(highest_id / page_size + 1);
  }

  /// Keeps a copy of the text of a term that has none yet. Throws std::bad_alloc and then changes
  /// nothing.
  void insert(const Term* term, std::string_view text) {
    Slot*& page = pages_[term->id / page_size];
    if (page == nullptr) [[unlikely]] {
      page = make_page();
    }
    Slot& slot = page[term->id % page_size];
    if (text.size() <= longest_inside) {
      copy_text(slot.bytes.data(), text.data(), text.size());
      slot.size = static_cast<std::uint8_t>(text.size());
    } else {
      insert_long(slot, text);
    }
  }

  /// Gives the text of a term that has one; it stays as long as this object.
  std::string_view get(const Term* term) const {
    assert(pages_[term->id / page_size] != nullptr);
    const Slot& slot = pages_[term->id / page_size][term->id % page_size];
    return slot.size == elsewhere ? long_text(slot)
                                  : std::string_view(slot.bytes.data(), slot.size);
  }

  /// Fetches into the cache where the text of `term` lies if it has one, or is to lie.
  [[gnu::always_inline]] void prefetch(const Term* term) const {
    const Slot* const page = pages_[term->id / page_size];
    if (page != nullptr) {
      __builtin_prefetch(page + term->id % page_size);
    }
  }

 private:
  static constexpr std::size_t page_size = 256;
  static constexpr std::size_t longest_inside = 15;
  static constexpr std::uint8_t elsewhere = 255;

  /// A text of up to 15 bytes, or where a longer one lies behind its length.
  struct alignas(16) Slot {
    std::array<char, longest_inside> bytes;
    std::uint8_t size;  // or `elsewhere`
  };

  Slot* make_page();
  void insert_long(Slot& slot, std::string_view text);
  static std::string_view long_text(const Slot& slot);

  LargeArray<Slot*> pages_;
  std::vector<LargeBlock> chunks_;  // of pages
  std::size_t used_bytes_ = 0;      // of the last chunk
  Arena long_texts_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_REFERENCE_TEXTS_H
