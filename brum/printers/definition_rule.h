#ifndef BRUM_PRINTERS_DEFINITION_RULE_H
#define BRUM_PRINTERS_DEFINITION_RULE_H

#include <cstddef>
#include <limits>

#include "brum/printers/reference_counts.h"
#include "brum/terms/term_manager.h"
#include "brum/utils/export.h"

namespace brum {

/// Decides which subterms of a text get a definition of their own; all others are written inline.
///
/// Constants, variables and numerals never do. A compound subterm does
/// - when it is shared: more than one place refers to it, as the driver of the text counts places;
/// - when writing it inline would copy too much: the text of a term is copied into the text of the
///   term around it, so a deep unshared nest written inline would cost the square of its depth.
///
/// Where to cut an unshared nest depends on the kind of text. In a document of one formula a term
/// is cut off when it is the outermost of more than `inline_levels` nested compound terms; the
/// formula itself is never cut off. In scripts that go on growing (several terms, API traces) any
/// term whose text exceeds `inline_bytes` is, the listed or asserted term itself included.
class BRUM_EXPORT DefinitionRule {
 public:
  static constexpr std::size_t inline_levels = 64;
  static constexpr std::size_t inline_bytes = 4096;

  /// For a document of one formula; `counts` must outlive the rule.
  static DefinitionRule for_formula(const ReferenceCounts& counts) {
    return {&counts, inline_levels, unlimited};
  }

  /// For a script of several terms, counted over the whole list; `counts` must outlive the rule.
  static DefinitionRule for_script(const ReferenceCounts& counts) {
    return {&counts, unlimited, inline_bytes};
  }

  /// For a trace whose later pieces may refer to anything: the places are all those of the store.
  static DefinitionRule for_trace() { return {nullptr, unlimited, inline_bytes}; }

  /// True when several places refer to the compound term `term`.
  bool is_shared(const Term* term) const {
    return term->symbol->arity != 0 && has_several_places(term);
  }

  /// True when several places refer to `term`, whatever it is.
  bool has_several_places(const Term* term) const {
    return counts_ != nullptr ? counts_->is_shared(term) : TermManager::num_uses(term) > 1;
  }

  /// Fetches what has_several_places() looks at into the cache, but for the term itself.
  [[gnu::always_inline]] void prefetch(const Term* term) const {
    if (counts_ != nullptr) {
      counts_->prefetch(term);
    } else {
      TermManager::prefetch_uses(term);
    }
  }

  /// True when a term other than the outermost is to be cut off for its nesting: `levels` compound
  /// terms nested in one another, the term included.
  bool exceeds_levels(std::size_t levels) const { return levels > most_levels_; }

  /// True when a term is to be cut off for its length in bytes.
  bool exceeds_bytes(std::size_t bytes) const { return bytes > most_bytes_; }

 private:
  static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

  DefinitionRule(const ReferenceCounts* counts, std::size_t most_levels, std::size_t most_bytes)
      : counts_(counts), most_levels_(most_levels), most_bytes_(most_bytes) {}

  const ReferenceCounts* counts_;  // null for the store's own counts
  std::size_t most_levels_;
  std::size_t most_bytes_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_DEFINITION_RULE_H
