#ifndef BRUM_READERS_TERM_BUILDER_H
#define BRUM_READERS_TERM_BUILDER_H

#include <vector>

#include "brum/readers/logic_name.h"
#include "brum/readers/partial_operators.h"
#include "brum/readers/side_conditions.h"
#include "brum/readers/value.h"
#include "brum/terms/term_manager.h"

namespace brum {

/// The term manager as the rewritings of the reader see it: with numbers of the logic at hand, with
/// real operators over integers, and with operators that are not total functions of the store.
///
/// Throws what the manager throws.
class TermBuilder {
 public:
  /// `manager` must outlive the builder.
  explicit TermBuilder(TermManager& manager)
      : manager_(manager), partial_operators_(*this, side_conditions_) {}
  TermBuilder(const TermBuilder&) = delete;
  TermBuilder& operator=(const TermBuilder&) = delete;

  TermManager& manager() const { return manager_; }
  SideConditions& side_conditions() { return side_conditions_; }
  PartialOperators& partial_operators() { return partial_operators_; }

  /// Sets the logic, which says of which sort numerals are.
  void set_logic(const std::string& name);
  bool numerals_are_real() const { return numerals_are_real_; }

  /// What the stated logic allows, nothing where its name does not say it.
  const std::optional<LogicFeatures>& logic() const { return logic_; }

  /// Notes that a rewriting needs more than the text that was read.
  void need(bool LogicFeatures::*feature) { added_features_.*feature = true; }
  const LogicFeatures& added_features() const { return added_features_; }

  bool is_number_sort(const DataType* sort) const {
    return sort == manager_.get_int_type() || sort == manager_.get_real_type();
  }
  const DataType* sort_of(Value value) const {
    return value.as_real ? manager_.get_real_type() : value.term->sort();
  }
  bool is_real(Value value) const {
    return value.as_real || value.term->sort() == manager_.get_real_type();
  }

  /// Gives an application whose sort is `wanted`, as a value of sort `wanted`: an Int term where a
  /// Real is wanted is marked.
  Value as_sort(const Term* term, const DataType* wanted) const {
    return {term, wanted == manager_.get_real_type() && term->sort() == manager_.get_int_type()};
  }

  /// What an integral numeral denotes where the logic is not purely real: an Int.
  Value numeral(const QNumber& number);

  /// What a real constant denotes: a Real, but an integral one is an Int that stands for a Real
  /// where the logic is not purely real, so that strict readers take what is printed.
  Value decimal(const QNumber& number);

  /// Gives a number to compute with among integers, or among reals.
  const Term* number(const QNumber& number, bool real);

  /// Gives the value of an Int or Real numeral, null for any other term.
  const QNumber* number_of(const Term* term) const;

  // Operators that exist over Int and Real. `real` asks for the one over Real, whose arguments may
  // still be Int; without it that is decided by the arguments' sorts.

  const Term* plus(const Term* a, const Term* b, bool real);
  const Term* times(const Term* a, const Term* b, bool real);
  const Term* leq(const Term* a, const Term* b, bool real);
  const Term* equal(const Term* a, const Term* b, bool real);
  const Term* ite(const Term* condition, const Term* a, const Term* b, bool real);

  /// Gives -a: a number for a number, else (-1) * a.
  const Term* negate(const Term* a, bool real);

  /// Gives a - b, as a + (-b).
  const Term* minus(const Term* a, const Term* b, bool real);

  /// Gives a < b, as not (b <= a).
  const Term* less(const Term* a, const Term* b, bool real);

 private:
  bool over_integers(const Term* a, const Term* b) const {
    return a->sort() == manager_.get_int_type() && b->sort() == manager_.get_int_type();
  }
  const Term* apply(const Symbol* symbol, std::initializer_list<const Term*> arguments);

  TermManager& manager_;
  SideConditions side_conditions_;
  PartialOperators partial_operators_;
  std::optional<LogicFeatures> logic_;
  LogicFeatures added_features_;
  std::vector<const Term*> arguments_;
  bool numerals_are_real_ = false;
};

}  // namespace brum

#endif  // BRUM_READERS_TERM_BUILDER_H
