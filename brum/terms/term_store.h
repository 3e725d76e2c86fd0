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
/// counts its uses; a binary term takes 40 bytes. Nothing is destroyed term by term, so that a deep
/// formula costs no stack when the store dies.
///
/// A term is looked for by its youngest argument, of which the store knows the first user: the
/// oldest term with this youngest argument. Where there is none the term is new, and that argument
/// was mostly made a moment ago, so that what is looked at is in the cache. Terms that are nobody's
/// first user, and constants, are in the unique table: open addressing over their addresses, at
/// most three quarters full, and beside it a byte of each hash, so that a search looks at hardly
/// any term but the right one. A list of the first users takes 8 to 16 bytes a term, the table 12
/// to 24 for each that is in it.
class BRUM_EXPORT TermStore {
 public:
  TermStore() = default;
  TermStore(const TermStore&) = delete;
  TermStore& operator=(const TermStore&) = delete;

  /// Gives the application of `symbol` to `arguments`, made now if it is not there yet. The
  /// arguments must be terms of this store, as many as the symbol's arity. Throws std::bad_alloc
  /// and then changes nothing, and TermManager::error where an argument cannot be one of this
  /// store, as there are fewer terms than its id says.
  const Term* apply(const Symbol* symbol, std::span<const Term* const> arguments);

  /// The number of terms, which is also the highest id.
  std::size_t size() const { return first_users_.size(); }

  /// The number of argument positions of the store's terms that hold `term`.
  static std::uint64_t uses(const Term* term) { return header_of(term)->num_uses; }

  /// Fetches what uses() looks at into the cache: it may lie on another line than the term.
  [[gnu::always_inline]] static void prefetch_uses(const Term* term) {
    __builtin_prefetch(header_of(term));
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

  /// What the store keeps of a term. It lies right before the term and is not part of it, so that
  /// it may change while the term is constant.
  struct Header {
    std::uint64_t num_uses : 63;
    std::uint64_t is_in_table : 1;
  };

  static_assert(sizeof(Header) == sizeof(std::uint64_t));

  static Header* header_of(const Term* term) {
    return reinterpret_cast<Header*>(const_cast<Term*>(term)) - 1;
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
  void forget(const Term* term) noexcept;
  void make_room_in_table();
  void grow_table();
  Chunk& chunk_with_room(std::size_t bytes);
  void add_chunk(std::size_t least_bytes);
  const Term* add(const Symbol* symbol, std::span<const Term* const> arguments);
  const Term*& first_user_of(const Term* term) { return first_users_[term->id - 1]; }

  std::vector<Chunk> chunks_;
  LargeArray<const Term*> slots_;   // the unique table; its length is 0 or a power of two
  LargeArray<std::uint8_t> marks_;  // per slot some bits of the hash; 0 where it is empty
  std::size_t num_in_table_ = 0;
  LargeList<const Term*> first_users_;  // by id, the one of the term with id 1 first; or null
};

}  // namespace brum

#endif  // BRUM_TERMS_TERM_STORE_H
