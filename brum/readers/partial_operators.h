#ifndef BRUM_READERS_PARTIAL_OPERATORS_H
#define BRUM_READERS_PARTIAL_OPERATORS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "brum/numbers/qnumber.h"
#include "brum/readers/side_conditions.h"
#include "brum/readers/value.h"
#include "brum/utils/hash_containers.h"

namespace brum {

class TermBuilder;

/// A symbol that the reader made up, because the store has no operator for what was read.
struct IntroducedSymbol {
  const Symbol* symbol = nullptr;

  /// The operator that it stands for: `/`, `div`, `mod` or `distinct`.
  std::string operation;

  /// The arguments of that operator, for a constant that is the value of `/` or `div`. None for
  /// a function of one argument x, which is the value of the operator at x and zero, and for the
  /// symbols of a `distinct`, which have no meaning one by one.
  std::vector<const Term*> arguments;
};

/// Builds what is not one term of the store: division by what is no number, and large `distinct`.
///
/// - SMT-LIB's `/`, `div` and `mod` are total; at zero their value is some function of the
///   dividend. That function is an uninterpreted one here, one for each operator in a script. The
///   quotient of a and b is a constant q with the condition that b = 0 and q is the function's
///   value, or b is not 0 and q is the quotient; b times q is then nonlinear.
/// - Division by a number needs no constant: it is multiplication, and for integers to_int of it.
/// - `distinct` of up to largest_distinct_by_pairs terms is a conjunction of disequalities. Beyond,
///   it is F: f(t_i) = i for all i, with a function f of its own, and the condition that F holds
///   or that two of the terms are equal: p < q, and e is t_p, and e is t_q, for constants p, q, e.
///   This is linear in size and means the same in every position.
///
/// While deferring() is set (within the body of a definition with parameters), an application that
/// depends on what the parameters will be is built with a symbol of its own, which is_deferred()
/// tells; resolve() builds it anew when the arguments are known.
class PartialOperators {
 public:
  static constexpr std::size_t largest_distinct_by_pairs = 128;

  PartialOperators(TermBuilder& builder, SideConditions& conditions)
      : builder_(builder), conditions_(conditions) {}
  PartialOperators(const PartialOperators&) = delete;
  PartialOperators& operator=(const PartialOperators&) = delete;

  /// Real division of two numbers, each Int or Real.
  Value divide(Value a, Value b);

  /// SMT-LIB's integer division and its remainder.
  const Term* divide_integers(const Term* a, const Term* b);
  const Term* remainder(const Term* a, const Term* b);

  /// `distinct` of two or more terms of one sort; `real` when they are numbers, not all of them
  /// Int.
  const Term* distinct(std::span<const Value> terms, bool real);

  void set_deferring(bool deferring) { deferring_ = deferring; }
  bool deferring() const { return deferring_; }

  bool is_deferred(const Symbol* symbol) const {
    return deferred_kinds_.find(symbol) != deferred_kinds_.end();
  }

  /// Builds the operator that `symbol`, a deferred one, stands for.
  Value resolve(const Symbol* symbol, std::span<const Term* const> arguments);

  /// All symbols made up so far, each after those that its arguments mention.
  const std::vector<IntroducedSymbol>& introduced() const { return introduced_; }
  bool is_introduced(const Symbol* symbol) const {
    return introduced_set_.find(symbol) != introduced_set_.end();
  }

 private:
  enum class Kind : std::uint8_t { real_division, integer_division, remainder, distinct };

  /// The operands of a division that has a quotient already.
  struct Division {
    const Term* dividend;
    const Term* divisor;
    bool real;
    bool operator==(const Division&) const = default;
  };
  struct HashDivision {
    std::uint64_t operator()(const Division& division) const;
  };
  struct Quotient {
    const Term* term = nullptr;
    SideConditions::Node condition = SideConditions::none;
  };

  const Term* divide_by_number(const Term* a, const QNumber& divisor);
  const Term* quotient(const Term* a, const Term* b, bool real);
  const Term* real_condition(const Term* q, const Term* a, const Term* b);
  const Term* integer_condition(const Term* q, const Term* a, const Term* b);
  const Term* at_zero(Kind kind, const Term* a);
  const Term* is_zero(const Term* a, bool real);
  const Term* distinct_by_pairs(std::span<const Value> terms, bool real);
  const Term* distinct_by_function(std::span<const Value> terms, bool real);
  const Term* is_member(const Term* place, const Term* element, std::span<const Value> terms,
                        bool real);
  const DataType* index_sort(std::size_t count);
  const Term* index(std::size_t i, const DataType* sort);
  const Term* conjunction(std::vector<const Term*>& terms);
  const Term* disjunction(std::vector<const Term*>& terms);

  const Symbol* introduce(const std::string& base, const DataType* type,
                          const std::string& operation, std::vector<const Term*> arguments);
  const Term* defer(Kind kind, const DataType* type, const std::vector<const Term*>& arguments);

  TermBuilder& builder_;
  SideConditions& conditions_;
  std::vector<IntroducedSymbol> introduced_;
  hsh::HashSet<const Symbol*> introduced_set_;
  hsh::HashMap<Division, Quotient, HashDivision> quotients_;
  hsh::HashMap<const Symbol*, Kind> deferred_kinds_;
  const Symbol* functions_at_zero_[3] = {};
  bool deferring_ = false;
};

}  // namespace brum

#endif  // BRUM_READERS_PARTIAL_OPERATORS_H
