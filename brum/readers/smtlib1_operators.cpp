#include "brum/readers/smtlib1_operators.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "brum/utils/smtlib_words.h"

namespace brum {

namespace {

using namespace std::literals;

/// An operator of version 1 that is one of version 2 under another name.
struct Alias {
  std::string_view name;
  std::string_view of;
};

constexpr std::array<Alias, 10> aliases{{
    {"implies", "=>"},
    {"iff", "="},
    {"if_then_else", "ite"},
    {"~", "-"},
    // Names from before the present ones, which some benchmarks kept.
    {"bvlt", "bvult"},
    {"bvleq", "bvule"},
    {"bvgt", "bvugt"},
    {"bvgeq", "bvuge"},
    {"bvsleq", "bvsle"},
    {"bvsgeq", "bvsge"},
}};

/// Names of version 2 that mean nothing in version 1.
constexpr std::array not_in_version_1 = {"=>"sv};

/// What version 1 lacks, but not to read it would help nobody.
constexpr std::array later_operators = {
    "div"sv,     "mod"sv,       "abs"sv,     "to_real"sv, "to_int"sv,
    "is_int"sv,  "divisible"sv, "bvnego"sv,  "bvuaddo"sv, "bvsaddo"sv,
    "bvumulo"sv, "bvsmulo"sv,   "bvusubo"sv, "bvssubo"sv, "bvsdivo"sv,
};

const Operator* find(std::span<const Operator> operators, std::string_view name) {
  const auto found = std::ranges::find(operators, name, &Operator::name);
  return found == operators.end() ? nullptr : &*found;
}

Operator make_alias(const Alias& alias) {
  Operator op = *find(smtlib2_operators(), alias.of);
  op.name = alias.name;
  if (alias.name == "iff") {
    op.operands = Operands::booleans;
  }
  if (op.role == Operator::Role::minus) {
    op.max_arguments = 1;
  }
  return op;
}

std::vector<Operator> all_smtlib1_operators() {
  std::vector<Operator> all;
  for (const Operator& op : smtlib2_operators()) {
    if (!is_among(not_in_version_1, op.name))
      all.push_back(op);
  }
  for (const Alias& alias : aliases) {
    all.push_back(make_alias(alias));
  }
  return all;
}

/// The name in version 2.
std::string_view smtlib2_name(const Operator& op) {
  const auto* const alias = std::ranges::find(aliases, op.name, &Alias::name);
  return alias == aliases.end() ? op.name : alias->of;
}

}  // namespace

const std::vector<Operator>& smtlib1_operators() {
  static const std::vector<Operator> all = all_smtlib1_operators();
  return all;
}

bool may_be_declared(const Operator& op, const std::optional<LogicFeatures>& logic) {
  if (is_among(later_operators, op.name))
    return true;
  if (!logic)
    return false;
  const std::string_view name = smtlib2_name(op);
  if (find(bit_vector_operators(), name) != nullptr)
    return !logic->bit_vectors;
  if (find(arithmetic_operators(), name) != nullptr)
    return !logic->integers && !logic->reals;
  return (name == "select" || name == "store") && !logic->arrays;
}

}  // namespace brum
