#ifndef BRUM_PRINTERS_SYMBOL_COLLECTOR_H
#define BRUM_PRINTERS_SYMBOL_COLLECTOR_H

#include <cstdint>

#include "brum/terms/term_index.h"
#include "brum/terms/term_walk.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// Collects the symbols of terms and the sorts that declarations of the user's symbols name into
/// two sets of the caller's, which must outlive it. A subterm is visited once, over all terms.
class BRUM_EXPORT SymbolCollector {
 public:
  SymbolCollector(hsh::HashSet<const Symbol*>& symbols, hsh::HashSet<const DataType*>& types)
      : symbols_(symbols), types_(types) {}

  /// Adds what `term` brings. Throws std::bad_alloc.
  void add_term(const Term* term);

 private:
  void add_symbol(const Symbol* symbol);
  void add_type(const DataType* type);

  hsh::HashSet<const Symbol*>& symbols_;
  hsh::HashSet<const DataType*>& types_;
  TermIndex<std::uint8_t> visited_;
  TermWalk walk_;
  std::vector<const DataType*> pending_;  // sorts still to be added
};

}  // namespace brum

#endif  // BRUM_PRINTERS_SYMBOL_COLLECTOR_H
