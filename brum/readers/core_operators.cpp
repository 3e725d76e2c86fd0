// Core and ArraysEx.

#include <array>
#include <string>

#include "brum/readers/smtlib2_operators.h"
#include "brum/readers/term_builder.h"

namespace brum {

namespace {

const Term* exclusive_or(TermBuilder& builder, const Term* a, const Term* b, bool /*real*/) {
  TermManager& manager = builder.manager();
  return manager.make_not(manager.make_iff(a, b));
}

const Term* implies(TermBuilder& builder, const Term* a, const Term* b, bool /*real*/) {
  TermManager& manager = builder.manager();
  return manager.make_or(manager.make_not(a), b);
}

Value distinct(TermBuilder& builder, const Application& application) {
  return {builder.partial_operators().distinct(application.arguments, application.real), false};
}

Value if_then_else(TermBuilder& builder, const Application& application) {
  const auto [condition, a, b] =
      std::array{application.arguments[0], application.arguments[1], application.arguments[2]};
  const DataType* sort = builder.sort_of(condition);
  if (sort != builder.manager().get_bool_type()) {
    throw TermManager::error("found " + sort->to_short_str() +
                             " as argument 1 of ite, expected Bool");
  }
  const DataType* sort_of_a = builder.sort_of(a);
  const DataType* sort_of_b = builder.sort_of(b);
  const bool fits = sort_of_a == sort_of_b ||
                    (builder.is_number_sort(sort_of_a) && builder.is_number_sort(sort_of_b));
  if (!fits) {
    throw TermManager::error("found " + sort_of_b->to_short_str() +
                             " as argument 3 of ite, expected " + sort_of_a->to_short_str());
  }
  const bool real = builder.is_real(a) || builder.is_real(b);
  return {builder.ite(condition.term, a.term, b.term, real), false};
}

/// Checks that the first argument is an array and that the others are of its component sorts.
void check_array_access(const TermBuilder& builder, std::string_view name,
                        std::span<const Value> arguments) {
  const DataType* array = builder.sort_of(arguments[0]);
  if (array->kind() != DataType::Kind::array) {
    throw TermManager::error("found " + array->to_short_str() + " as argument 1 of " +
                             std::string(name) + ", expected an array");
  }
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const DataType* wanted = array->get_component(i - 1);
    const DataType* found = builder.sort_of(arguments[i]);
    const bool fits = found == wanted || (wanted == builder.manager().get_real_type() &&
                                          found == builder.manager().get_int_type());
    if (!fits) {
      throw TermManager::error("found " + found->to_short_str() + " as argument " +
                               std::to_string(i + 1) + " of " + std::string(name) + ", expected " +
                               wanted->to_short_str());
    }
  }
}

Value select(TermBuilder& builder, const Application& application) {
  const auto arguments = application.arguments;
  check_array_access(builder, "select", arguments);
  return {builder.manager().make_select(arguments[0].term, arguments[1].term), false};
}

Value store(TermBuilder& builder, const Application& application) {
  const auto arguments = application.arguments;
  check_array_access(builder, "store", arguments);
  return {builder.manager().make_store(arguments[0].term, arguments[1].term, arguments[2].term),
          false};
}

using Builder = TermBuilder&;
using Argument = const Term*;

// clang-format off
const Operator core_table[] = {
    {.name = "true", .shape = Shape::constant,
     .step = [](Builder b, Argument, Argument, bool) { return b.manager().make_true(); }},
    {.name = "false", .shape = Shape::constant,
     .step = [](Builder b, Argument, Argument, bool) { return b.manager().make_false(); }},
    {.name = "not", .shape = Shape::unary, .operands = Operands::booleans,
     .step = [](Builder b, Argument x, Argument, bool) { return b.manager().make_not(x); }},
    {.name = "and", .shape = Shape::associative, .operands = Operands::booleans,
     .step = [](Builder b, Argument x, Argument y, bool) { return b.manager().make_and(x, y); }},
    {.name = "or", .shape = Shape::associative, .operands = Operands::booleans,
     .step = [](Builder b, Argument x, Argument y, bool) { return b.manager().make_or(x, y); }},
    {.name = "xor", .shape = Shape::left, .operands = Operands::booleans, .step = exclusive_or},
    {.name = "=>", .shape = Shape::right, .operands = Operands::booleans, .step = implies},
    {.name = "=", .shape = Shape::chain, .operands = Operands::same,
     .step = [](Builder b, Argument x, Argument y, bool real) { return b.equal(x, y, real); }},
    {.name = "distinct", .operands = Operands::same, .whole = distinct, .min_arguments = 2,
     .max_arguments = 0},
    {.name = "ite", .whole = if_then_else, .min_arguments = 3, .max_arguments = 3},
    {.name = "select", .theory = Theory::arrays, .whole = select, .min_arguments = 2,
     .max_arguments = 2},
    {.name = "store", .theory = Theory::arrays, .whole = store, .min_arguments = 3,
     .max_arguments = 3},
};
// clang-format on

}  // namespace

std::span<const Operator> core_operators() {
  return core_table;
}

}  // namespace brum
