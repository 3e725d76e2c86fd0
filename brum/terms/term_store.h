#ifndef BRUM_TERMS_TERM_STORE_H
#define BRUM_TERMS_TERM_STORE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "brum/terms/term.h"
#include "brum/utils/export.h"
#include "brum/utils/large_array.h"
#include "brum/utils/large_memory.h"

namespace brum {

/// Holds the terms of a manager, each application once (hash-consing).
///
/// Terms lie one after another in large chunks, in the order of their ids, each behind a word that
/// counts its uses; a binary term takes 40 bytes. The unique table is open addressing over
/// addresses of terms, at most three quarters full, and beside it a byte of each hash, so
/// that a search looks at hardly any term but the right one: 12 to 24 bytes a term. Nothing is
/// destroyed term by term, so that a deep formula costs no stack when the store dies.
class BRUM_EXPORT TermStore {
 public:
  TermStore() = default;
  TermStore(const TermStore&) = delete;
  TermStore& operator=(const TermStore&) = delete;

  /// Gives the application of `symbol` to `arguments`, made now if it is not there yet. The
  /// arguments must be terms of this store, as many as the symbol's arity. Throws std::bad_alloc
  /// and then changes nothing.
  const Term* apply(const Symbol* symbol, std::span<const Term* const> arguments);

  /// The number of terms, which is also the highest id.
  std::size_t size() const { return size_; }

  /// The number of argument positions of the store's terms that hold `term`.
  static std::uint64_t uses(const Term* term) { return *count_of_uses(term); }

  /// Fetches what uses() looks at into the cache: it may lie on another line than the term.
  [[gnu::always_inline]] static void prefetch_uses(const Term* term) {
    __builtin_prefetch(count_of_uses(term));
  }

  /// Forgets the terms made since size() was `old_size`. None of them may be used afterwards.
  void roll_back(std::size_t old_size) noexcept;

 private:
  /// A block of terms; `used` bytes of it are taken.
  struct Chunk {
    LargeBlock memory;
    std::size_t used = 0;
  };

  static const Term* term_at(const Chunk& chunk, std::size_t offset) noexcept;

  /// The count lies in the word before the term. It belongs to the store, not to the term, so that
  /// it may change while the term is constant.
  static std::uint64_t* count_of_uses(const Term* term) {
    return const_cast<std::uint64_t*>(reinterpret_cast<const std::uint64_t*>(term)) - 1;
  }

  static std::size_t bytes_of(std::size_t arity);

  /// A place in the table and the mark that belongs there.
  struct Slot {
    std::size_t index;
    std::uint8_t mark;
  };

  /// Gives the slot that holds the application, or the empty slot where it belongs.
  Slot find_slot(const Symbol* symbol, std::span<const Term* const> arguments) const;
  Slot first_empty_slot(std::uint64_t hash) const;
  void fill(Slot slot, const Term* term) noexcept;

  void empty_slot_of(const Term* term) noexcept;
  void make_room_in_table();
  Chunk& chunk_with_room(std::size_t bytes);

  std::vector<Chunk> chunks_;
  LargeArray<const Term*> slots_;   // the unique table; its length is 0 or a power of two
  LargeArray<std::uint8_t> marks_;  // per slot some bits of the hash; 0 where it is empty
  std::size_t size_ = 0;
};

}  // namespace brum

#endif  // BRUM_TERMS_TERM_STORE_H
