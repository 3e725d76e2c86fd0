#ifndef BRUM_PRINTERS_SYMBOL_COLLECTOR_H
#define BRUM_PRINTERS_SYMBOL_COLLECTOR_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "brum/terms/term_index.h"
#include "brum/terms/term_walk.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// Collects the symbols of terms and the sorts that declarations of the user's symbols name into
/// two sets of the caller's, which must outlive it and may hold others. A subterm is visited once,
/// over all terms.
class BRUM_EXPORT SymbolCollector {
 public:
  SymbolCollector(hsh::HashSet<const Symbol*>& symbols, hsh::HashSet<const DataType*>& types)
      : symbols_(symbols), types_(types) {
    if (!types.empty()) {
      looked_into_.emplace();
    }
  }

  /// Adds what `term` brings. Throws std::bad_alloc.
  void add_term(const Term* term);

  // For walks of the caller's own, which visit each subterm once over all terms.

  /// Must come before the symbols of each term if end_terms() is to come.
  void begin_term() { size_before_ = symbols_.size(); }

  /// Adds what one symbol brings, now or at the latest in end_term(), in the order of the calls.
  /// Throws std::bad_alloc.
  void add_symbol(const Symbol* symbol) {
    if (num_waiting_ != 0) {
      add_waiting(symbol);
    } else if (!is_settled_ || recent_[recent_place(symbol)] != symbol) {
      symbols_.bucket_count() < fewest_buckets ? insert_symbol(symbol) : add_waiting(symbol);
    }
  }

  /// Must come after the symbols of each term. Throws std::bad_alloc.
  void end_term();

  /// Makes the set of symbols as large as a walk over each term by itself would have made it, which
  /// asks for shared symbols again: an insertion that finds its symbol may make the table grow, and
  /// on that depends the order of the declarations. `last` is the last of the terms. Throws
  /// std::bad_alloc.
  void end_terms(const Term* last);

 private:
  static constexpr std::size_t num_recent = 32;

  /// In a set of so many buckets a symbol's mostly is not in the cache: there symbols wait until so
  /// many are together, while their buckets are being fetched.
  static constexpr std::size_t fewest_buckets = 4096;
  static constexpr std::size_t most_waiting = 16;

  static std::size_t recent_place(const Symbol* symbol) {
    return reinterpret_cast<std::uintptr_t>(symbol) / sizeof(Symbol) % num_recent;
  }

  /// Lets a symbol wait, and adds all that wait if they are enough.
  void add_waiting(const Symbol* symbol) {
    symbols_.prefetch(symbol);
    waiting_[num_waiting_++] = symbol;
    if (num_waiting_ == most_waiting) {
      end_term();
    }
  }

  void insert_symbol(const Symbol* symbol);
  void add_type(const DataType* type);

  hsh::HashSet<const Symbol*>& symbols_;
  hsh::HashSet<const DataType*>& types_;
  TermSet visited_;
  TermWalk walk_;
  std::vector<const DataType*> pending_;  // sorts still to be added
  std::size_t size_before_ = 0;           // of the set of symbols, before the last term
  const Symbol* last_added_ = nullptr;
  std::array<const Symbol*, most_waiting> waiting_;
  std::size_t num_waiting_ = 0;

  // If the set held sorts before: the arrays whose parts were added, as theirs may be missing.
  std::optional<hsh::HashSet<const DataType*>> looked_into_;

  // A few interpreted symbols that the set holds, so that the operators of a formula are not looked
  // up over and over. A look-up may be left out only while it would change nothing: the first one
  // after an addition may make the table grow, on which the order of the declarations depends.
  std::array<const Symbol*, num_recent> recent_{};
  const DataType* last_type_ = nullptr;  // found by the last look-up among the sorts
  bool is_settled_ = false;              // a look-up has found its symbol since the last addition
};

}  // namespace brum

#endif  // BRUM_PRINTERS_SYMBOL_COLLECTOR_H
