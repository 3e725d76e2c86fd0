#include "brum/readers/smtlib1_operators.h"

#include <algorithm>
#include <array>
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

/// What version 1 lacks, besides what version 2.6 lacks too, but not to read it would help nobody.
constexpr std::array later_operators = {
    "div"sv, "mod"sv, "abs"sv, "to_real"sv, "to_int"sv, "is_int"sv, "divisible"sv,
};

Operator make_alias(const Alias& alias) {
  Operator op = *std::ranges::find(smtlib2_operators(), alias.of, &Operator::name);
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
    if (is_among(not_in_version_1, op.name))
      continue;
    all.push_back(op);
    if (is_among(later_operators, op.name))
      all.back().theory = Theory::later;
  }
  for (const Alias& alias : aliases) {
    all.push_back(make_alias(alias));
  }
  return all;
}

}  // namespace

const std::vector<Operator>& smtlib1_operators() {
  static const std::vector<Operator> all = all_smtlib1_operators();
  return all;
}

}  // namespace brum
