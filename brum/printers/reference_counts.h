#ifndef BRUM_PRINTERS_REFERENCE_COUNTS_H
#define BRUM_PRINTERS_REFERENCE_COUNTS_H

#include <cstddef>
#include <cstdint>

#include "brum/printers/definition_map.h"
#include "brum/terms/term_index.h"
#include "brum/terms/term_walk.h"
#include "brum/utils/export.h"

namespace brum {

/// Counts from how many places the terms of a text refer to each subterm. Two argument positions of
/// one term are two places. Costs a byte per term met.
class BRUM_EXPORT ReferenceCounts {
 public:
  /// Counts the references below `term`. Subterms that were counted already, by this call or an
  /// earlier one, are not entered again, nor are those that `handled` (may be null) holds: their
  /// text exists. Throws std::bad_alloc.
  void add_term(const Term* term, const DefinitionMap* handled = nullptr);

  /// Counts `term` as add_term() does, and one place that refers to `term` itself.
  void add_reference(const Term* term);

  /// True when more than one place refers to `term`.
  bool is_shared(const Term* term) const { return counts_.get(term) > one; }

  /// True when `term` was met at all.
  bool is_counted(const Term* term) const { return counts_.get(term) != unseen; }

  /// The number of distinct terms that were counted.
  std::size_t num_terms() const { return num_terms_; }

 private:
  // A term that was met has a count of at least `met`: itself, then one for each place, up to two.
  static constexpr std::uint8_t unseen = 0;
  static constexpr std::uint8_t met = 1;
  static constexpr std::uint8_t one = 2;
  static constexpr std::uint8_t many = 3;

  TermIndex<std::uint8_t> counts_;
  TermWalk walk_;
  std::size_t num_terms_ = 0;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_REFERENCE_COUNTS_H
