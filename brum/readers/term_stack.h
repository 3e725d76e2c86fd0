#ifndef BRUM_READERS_TERM_STACK_H
#define BRUM_READERS_TERM_STACK_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "brum/readers/literals.h"
#include "brum/readers/names.h"
#include "brum/readers/read_error.h"
#include "brum/readers/smtlib2_operators.h"
#include "brum/readers/term_builder.h"
#include "brum/utils/large_array.h"

namespace brum {

/// The part of a parser of terms that both versions of SMT-LIB share: what is open of a term, and
/// how finished arguments become applications.
///
/// Terms are built bottom-up as their brackets close. What is open lies on a stack of frames, and
/// the values of finished arguments on a stack of values, so that the depth of a term costs no call
/// stack, and each token a constant number of steps.
///
/// A negative number or a fraction is written as an application to numbers: such an application is
/// folded into one number, and no terms are made of its parts.
class TermStack {
 protected:
  struct Frame {
    enum class Kind : std::uint8_t {
      // Applications:
      operation,   // of an operator of a theory
      function,    // of a declared symbol
      definition,  // of a defined function
      // Others:
      let_binding,  // the value of a let variable
      let_body,
      annotated,  // (! ...
    };

    Kind kind = Kind::operation;
    bool is_difference = false;  // of divisible: its arguments are those of a difference
    union {
      const Operator* op;
      const Symbol* function;
      const Definition* definition;
      Name* variable;     // of let_binding
      std::size_t count;  // of let_body: its variables
    };
    Name* name = nullptr;         // of a definition
    std::size_t first_value = 0;  // in values_; for a let of version 2, in its bindings
    std::size_t first_index = 0;  // in indices_
    TextPosition position;
  };

  /// Both arguments must outlive the stack.
  TermStack(TermBuilder& builder, Literals& literals) : builder_(builder), literals_(literals) {}

  /// Forgets what is open, as at the beginning of a term.
  void clear();

  /// Makes a frame whose arguments and indices begin at the top of the stacks.
  Frame new_frame(Frame::Kind kind, TextPosition position) const {
    return {.kind = kind,
            .op = nullptr,
            .first_value = values_.size(),
            .first_index = indices_.size(),
            .position = position};
  }

  /// Lets a name that is not declared stand for the manager's symbol of that name, if there is one.
  void find_in_signature(Name& name) const;

  /// Pushes the value of a numeral, decimal or other literal.
  void push_literal(const Token& token);

  /// Whether the frame on top is an application, which one more value does not end.
  bool waits_for_arguments() const {
    return !frames_.empty() && frames_.back().kind <= Frame::Kind::definition;
  }

  /// Ends the frame on top if it is a difference alone below `divisible`, whose arguments it leaves
  /// to that operator. Gives whether it was one.
  bool end_divisors_difference() { return waits_for_number() && end_difference(); }

  /// Ends the frame on top if it is the spelling of a number: minus a number, or one number divided
  /// by another that is not 0. Pushes that number and gives whether it was one.
  bool fold_numbers() { return waits_for_number() && fold_number(); }

  /// The finished arguments of the frame on top, which is an application; with terms for numbers.
  std::span<Value> arguments() {
    const std::span arguments(values_.begin() + frames_.back().first_value, values_.end());
    if (!numbers_.empty()) {
      make_terms_of_numbers(arguments);
    }
    return arguments;
  }

  /// Gives what an operation or a declared function makes of its arguments. Throws
  /// TermManager::error `found …, expected …`.
  Value build(const Frame& frame, std::span<Value> arguments);

  /// Pops the frame on top, an application, with its arguments, and pushes its value.
  void end_application(Value value) {
    const Frame& frame = frames_.back();
    values_.shrink(frame.first_value);
    if (frame.kind == Frame::Kind::operation && !indices_.empty()) {
      indices_.resize(frame.first_index);
    }
    frames_.pop_back();
    values_.push_back(value);
  }

  /// The value on top as a term, also where it might be part of the spelling of a number.
  const Term* top_term();

  LargeList<Frame> frames_;
  LargeList<Value> values_;  // of finished arguments; those without a term are in numbers_
  std::vector<QNumber> indices_;

 private:
  /// Whether a number read now may be part of the spelling of another number: the frame on top is a
  /// minus or a division. No term is made of it then, so that reading `(- 3)` or `(/ 1 3)` makes
  /// one term and not two or three.
  bool waits_for_number() const {
    if (frames_.empty() || frames_.back().kind != Frame::Kind::operation) {
      return false;
    }
    const Operator::Role role = frames_.back().op->role;
    return role == Operator::Role::minus || role == Operator::Role::division;
  }

  bool end_difference();
  bool fold_number();
  void make_terms_of_numbers(std::span<Value> arguments);
  void push_number(const Number& number);
  Value apply_function(const Symbol* function, std::span<const Value> arguments);

  TermBuilder& builder_;
  Literals& literals_;
  std::vector<Number> numbers_;  // in the order of their places in values_
  std::vector<const Term*> children_;
};

}  // namespace brum

#endif  // BRUM_READERS_TERM_STACK_H
