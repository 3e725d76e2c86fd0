#ifndef BRUM_TERMS_TERM_STORE_H
#define BRUM_TERMS_TERM_STORE_H

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "brum/terms/sort_table.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"
#include "brum/utils/large_array.h"
#include "brum/utils/large_memory.h"

namespace brum {

/// Holds the terms of a manager, each application once (hash-consing).
///
/// Terms lie one after another in large chunks, in the order of their ids, each behind a word of
/// notes; a binary term takes 40 bytes. Nothing is destroyed term by term, so that a deep formula
/// costs no stack when the store dies.
///
/// A term is looked for by its youngest argument, which knows its first user: the oldest term with
/// this youngest argument. Where there is none the term is new, and that argument was mostly made a
/// moment ago, so that what is looked at is in the cache. A constant is known by its symbol. Terms
/// that are nobody's first user or lie in another chunk than that argument, and constants whose
/// symbols or sorts are another manager's, are in the unique table: open addressing over their
/// addresses, at most three quarters full. It takes 11 to 22 bytes for each that is in it.
class BRUM_EXPORT TermStore {
 public:
  /// The sorts are those of the same manager and must outlive the store.
  explicit TermStore(const SortTable& sorts) : sorts_(sorts) {}
  TermStore(const TermStore&) = delete;
  TermStore& operator=(const TermStore&) = delete;

  /// Gives the application of `symbol` to `arguments`, made now if it is not there yet. The
  /// arguments must be terms of this store, as many as the symbol's arity. Throws std::bad_alloc
  /// and then changes nothing, and TermManager::error where an argument cannot be one of this
  /// store, as there are fewer terms than its id says.
  const Term* apply(const Symbol* symbol, std::span<const Term* const> arguments);

  /// The number of terms, which is also the highest id.
  std::size_t size() const { return num_terms_; }

  /// The number of argument positions of the store's terms that hold `term`.
  static std::uint64_t uses(const Term* term) { return notes_of(term).num_uses(); }

  /// Fetches what uses() looks at into the cache: it may lie on another line than the term.
  [[gnu::always_inline]] static void prefetch_uses(const Term* term) {
    __builtin_prefetch(&notes_of(term));
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

  /// What the store notes of a term: how often it is used, whether it is in the unique table, and
  /// where its first user is. They lie right before the term and are not part of it, so that they
  /// may change while the term is constant.
  class Notes {
   public:
    std::uint64_t num_uses() const { return word_ >> uses_shift; }
    void add_use() { word_ += one_use; }
    void take_use() { word_ -= one_use; }

    bool is_in_table() const { return (word_ & in_table) != 0; }
    void put_into_table() { word_ |= in_table; }

    /// How many words behind the term its first user lies; `none` when it has none, `far` when the
    /// terms whose youngest argument it is are all in the table.
    std::uint64_t first_user() const { return word_ >> distance_shift & far; }
    void set_first_user(std::uint64_t distance) {
      word_ = (word_ & ~(far << distance_shift)) | distance << distance_shift;
    }

    static constexpr std::uint64_t none = 0;
    static constexpr std::uint64_t far = (std::uint64_t{1} << 19U) - 1;

   private:
    // From the lowest bit on: one bit for the table, 19 for the distance, 44 for the uses, of which
    // there cannot be more, as an argument takes 8 bytes and addresses have 47 bits.
    static constexpr std::uint64_t in_table = 1;
    static constexpr unsigned distance_shift = 1;
    static constexpr unsigned uses_shift = 20;
    static constexpr std::uint64_t one_use = std::uint64_t{1} << uses_shift;

    std::uint64_t word_ = 0;
  };

  static_assert(sizeof(Notes) == sizeof(std::uint64_t));

  static Notes& notes_of(const Term* term) {
    return *(reinterpret_cast<Notes*>(const_cast<Term*>(term)) - 1);
  }

  static std::size_t bytes_of(std::size_t arity);

  /// A place in the unique table: the address of a term, which has 48 bits at most, and above it
  /// the highest bits of the term's hash, so that a search looks at hardly any term but the right
  /// one.
  class Slot {
   public:
    // cppcheck-suppress uninitMemberVar  ; trivial, as the table's memory begins as zeros
    Slot() = default;
    Slot(const Term* term, std::uint64_t hash)
        : word_(reinterpret_cast<std::uintptr_t>(term) | (hash & hash_bits)) {
      assert(this->term() == term);
    }

    bool is_empty() const { return word_ == 0; }
    const Term* term() const {
      // NOLINTNEXTLINE(performance-no-int-to-ptr): the word holds more than the address
      return reinterpret_cast<const Term*>(word_ & ~hash_bits);
    }
    bool may_hold(std::uint64_t hash) const { return ((word_ ^ hash) & hash_bits) == 0; }

   private:
    static constexpr std::uint64_t hash_bits = ~std::uint64_t{0} << 48U;

    std::uint64_t word_;
  };

  std::size_t first_empty_slot(std::uint64_t hash) const;
  void empty_slot_of(const Term* term) noexcept;
  void forget(const Term* term) noexcept;
  const Term* constant(const Symbol* symbol);
  const Term* apply_in_table(const Symbol* symbol, std::span<const Term* const> arguments);
  static std::uint64_t distance_to_next(const Chunk& chunk, const Term* term) noexcept;
  static const Term* at_distance(const Term* term, std::uint64_t words) noexcept;
  void make_room_in_table();
  void grow_table();
  Chunk& chunk_with_room(std::size_t bytes);
  void add_chunk(std::size_t least_bytes);
  const Term* add(Chunk& chunk, const Symbol* symbol, std::span<const Term* const> arguments);

  const SortTable& sorts_;
  std::vector<Chunk> chunks_;
  std::size_t num_terms_ = 0;
  LargeArray<Slot> slots_;  // the unique table; their number is 0 or a power of two
  std::size_t num_in_table_ = 0;
};

}  // namespace brum

#endif  // BRUM_TERMS_TERM_STORE_H
