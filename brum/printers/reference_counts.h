#ifndef BRUM_PRINTERS_REFERENCE_COUNTS_H
#define BRUM_PRINTERS_REFERENCE_COUNTS_H

#include <algorithm>
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

  /// The same; calls `first_visit` for each term that is counted for the first time, before its
  /// arguments, and `done` for each of them after its arguments. Throws what they throw and
  /// std::bad_alloc.
  template <class FirstVisit, class Done>
  void add_term(const Term* term, const DefinitionMap* handled, FirstVisit&& first_visit,
                Done&& done);

  /// Counts `term` as add_term() does, and one place that refers to `term` itself.
  void add_reference(const Term* term);

  /// The same with calls.
  template <class FirstVisit, class Done>
  void add_reference(const Term* term, FirstVisit&& first_visit, Done&& done);

  /// True when more than one place refers to `term`.
  bool is_shared(const Term* term) const { return counts_.get(term) > one; }

  /// Fetches what is_shared() looks at into the cache.
  [[gnu::always_inline]] void prefetch(const Term* term) const { counts_.prefetch(term); }

  /// True when `term` was met at all.
  bool is_counted(const Term* term) const { return counts_.get(term) != unseen; }

  /// The number of distinct terms that were counted.
  std::size_t num_terms() const { return num_terms_; }

  /// The number of terms that more than one place refers to.
  std::size_t num_shared() const { return num_shared_; }

  /// About how many bytes the text of these terms takes, and rather too many than too few: terms
  /// with an operator and two names of a few letters, of which the shared ones are defined.
  std::size_t expected_text_bytes() const { return num_terms_ * 20 + num_shared_ * 40; }

  /// The highest id of a term that was counted, 0 if there is none.
  std::uint64_t highest_id() const { return highest_id_; }

 private:
  // A term that was met has a count of at least `met`: itself, then one for each place, up to two.
  static constexpr std::uint8_t unseen = 0;
  static constexpr std::uint8_t met = 1;
  static constexpr std::uint8_t one = 2;
  static constexpr std::uint8_t many = 3;

  /// Counts one reference, or none for the outermost term. Gives whether the term is new.
  bool visit(const Term* term, bool is_referred_to);

  TermIndex<std::uint8_t> counts_;
  TermWalk walk_;
  std::size_t num_terms_ = 0;
  std::size_t num_shared_ = 0;
  std::uint64_t highest_id_ = 0;
};

inline bool ReferenceCounts::visit(const Term* term, bool is_referred_to) {
  std::uint8_t& count = counts_[term];
  // Without a branch for the references, as nobody can foresee how many there are.
  const bool is_new = count == unseen;
  if (is_new) {
    count = met;
    ++num_terms_;
  }
  num_shared_ += static_cast<std::size_t>(is_referred_to) & static_cast<std::size_t>(count == one);
  count = static_cast<std::uint8_t>(std::min<int>(count + (is_referred_to ? 1 : 0), many));
  return is_new;
}

template <class FirstVisit, class Done>
void ReferenceCounts::add_term(const Term* term, const DefinitionMap* handled,
                               FirstVisit&& first_visit, Done&& done) {
  const auto enter = [&](const Term* visited) {
    if (handled != nullptr && handled->find(visited) != handled->end()) {
      return false;
    }
    const bool is_new = visit(visited, visited != term);  // nothing below a term refers to it
    if (is_new) {
      first_visit(visited);
    }
    return is_new;
  };
  highest_id_ = std::max(highest_id_, term->id);  // its subterms are older
  walk_.run(term, enter, done);
}

template <class FirstVisit, class Done>
void ReferenceCounts::add_reference(const Term* term, FirstVisit&& first_visit, Done&& done) {
  add_term(term, nullptr, first_visit, done);
  visit(term, true);
}

}  // namespace brum

#endif  // BRUM_PRINTERS_REFERENCE_COUNTS_H
