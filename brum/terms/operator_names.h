#ifndef BRUM_TERMS_OPERATOR_NAMES_H
#define BRUM_TERMS_OPERATOR_NAMES_H

#include <array>
#include <string_view>

#include "brum/terms/symbol_tag.h"

namespace brum {

/// An operator of the theories as SMT-LIB (1.2 and 2.6 alike) names it.
struct OperatorName {
  SymbolTag::tag tag;
  std::string_view name;
  bool indexed;  // the spelling carries numbers besides the name
};

/// Every tagged operator once, in the order of the tags.
inline constexpr std::array<OperatorName, 31> operator_names{{
    {SymbolTag::equality, "=", false},
    {SymbolTag::if_then_else, "ite", false},
    {SymbolTag::int_modular_congruence, "divisible", true},
    {SymbolTag::bv_concat, "concat", false},
    {SymbolTag::bv_extract, "extract", true},
    {SymbolTag::bv_not, "bvnot", false},
    {SymbolTag::bv_and, "bvand", false},
    {SymbolTag::bv_or, "bvor", false},
    {SymbolTag::bv_xor, "bvxor", false},
    {SymbolTag::bv_ult, "bvult", false},
    {SymbolTag::bv_slt, "bvslt", false},
    {SymbolTag::bv_ule, "bvule", false},
    {SymbolTag::bv_sle, "bvsle", false},
    {SymbolTag::bv_comp, "bvcomp", false},
    {SymbolTag::bv_neg, "bvneg", false},
    {SymbolTag::bv_add, "bvadd", false},
    {SymbolTag::bv_sub, "bvsub", false},
    {SymbolTag::bv_mul, "bvmul", false},
    {SymbolTag::bv_udiv, "bvudiv", false},
    {SymbolTag::bv_sdiv, "bvsdiv", false},
    {SymbolTag::bv_urem, "bvurem", false},
    {SymbolTag::bv_srem, "bvsrem", false},
    {SymbolTag::bv_shl, "bvshl", false},
    {SymbolTag::bv_lshr, "bvlshr", false},
    {SymbolTag::bv_ashr, "bvashr", false},
    {SymbolTag::bv_rotate_left, "rotate_left", true},
    {SymbolTag::bv_rotate_right, "rotate_right", true},
    {SymbolTag::bv_zero_extend, "zero_extend", true},
    {SymbolTag::bv_sign_extend, "sign_extend", true},
    {SymbolTag::array_select, "select", false},
    {SymbolTag::array_store, "store", false},
}};

/// Gives the row of `tag`, which must not be SymbolTag::none.
constexpr const OperatorName& operator_name(SymbolTag::tag tag) {
  return operator_names[static_cast<std::size_t>(tag - SymbolTag::equality)];
}

static_assert([] {
  std::size_t row = 0;
  for (const OperatorName& entry : operator_names) {
    if (entry.tag != SymbolTag::equality + row) {
      return false;
    }
    ++row;
  }
  return operator_names.back().tag == SymbolTag::array_store;
}());

}  // namespace brum

#endif  // BRUM_TERMS_OPERATOR_NAMES_H
