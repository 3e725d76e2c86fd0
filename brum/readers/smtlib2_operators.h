#ifndef BRUM_READERS_SMTLIB2_OPERATORS_H
#define BRUM_READERS_SMTLIB2_OPERATORS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "brum/numbers/qnumber.h"
#include "brum/readers/logic_name.h"
#include "brum/readers/value.h"

namespace brum {

class TermBuilder;

/// How an operator's arguments are put together.
enum class Shape : std::uint8_t {
  constant,     // none
  unary,        // step(a)
  binary,       // step(a, b)
  associative,  // one or more, as a balanced tree of steps
  left,         // two or more: step(step(a, b), c)
  right,        // two or more: step(a, step(b, c))
  chain,        // two or more: the conjunction of step(a, b), step(b, c), as a balanced tree
  whole,        // `whole` gets all of them
};

/// Which sorts an operator's arguments may have.
enum class Operands : std::uint8_t {
  any,          // `whole` or `step` checks
  same,         // all of one sort, or Int and Real mixed
  booleans,     // Bool
  integers,     // Int
  numbers,      // Int or Real, each
  bit_vectors,  // of any widths
  same_width,   // bit-vectors of one width
};

/// What a logic must have for an operator's name to be the operator's.
enum class Theory : std::uint8_t {
  core,  // which every logic has
  arrays,
  numbers,  // of one sort at least
  integers,
  reals,
  integers_and_reals,
  bit_vectors,
  later,  // which no logic has in the version of SMT-LIB that is read
};

/// What a `whole` is given.
struct Application {
  std::span<const QNumber> indices;  // as many as the operator wants
  std::span<const Value> arguments;
  bool real;  // whether an argument is a Real, or an Int that stands for one
};

/// One operator of a theory of SMT-LIB: all that the reader knows about it.
///
/// Builders may throw TermManager::error; the reader adds the place.
struct Operator {
  /// Makes one application. The second argument of a unary operator is null.
  using Step = const Term* (*)(TermBuilder&, const Term*, const Term*, bool real);
  using Whole = Value (*)(TermBuilder&, const Application&);

  /// The ones that the reader of terms treats on its own: minus and division of numerals are the
  /// spelling of negative numbers and fractions, and a difference right below `divisible` that of a
  /// congruence.
  enum class Role : std::uint8_t { plain, minus, division, divisible };

  std::string_view name;
  Theory theory = Theory::core;
  Shape shape = Shape::whole;
  Operands operands = Operands::any;
  Step step = nullptr;
  Whole whole = nullptr;
  std::uint8_t num_indices = 0;
  std::uint8_t min_arguments = 1;  // of a `whole`
  std::uint8_t max_arguments = 1;  // of a `whole`; 0 means any number
  Role role = Role::plain;
};

/// The operators of SMT-LIB 2.6's quantifier-free Core, Ints, Reals, Reals_Ints,
/// FixedSizeBitVectors and ArraysEx, those that the logic QF_BV adds, and the overflow predicates
/// of version 2.7. No two have one name.
const std::vector<Operator>& smtlib2_operators();

// The parts of that list, one for each group of theories.
std::span<const Operator> core_operators();
std::span<const Operator> arithmetic_operators();
std::span<const Operator> bit_vector_operators();

/// Whether a text of this logic may give the operator's name a meaning of its own, as the logic
/// lacks its theory. No logic stands for one whose name does not say what it allows.
bool may_be_declared(const Operator& op, const std::optional<LogicFeatures>& logic);

/// Gives what `op` makes of `arguments`, which may be overwritten. Checks number and sorts of the
/// arguments. Throws TermManager::error `found …, expected …`.
Value apply_operator(TermBuilder& builder, const Operator& op, std::span<const QNumber> indices,
                     std::span<Value> arguments);

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB2_OPERATORS_H
