#ifndef BRUM_TERMS_SYMBOL_TAG_H
#define BRUM_TERMS_SYMBOL_TAG_H

#include <cstdint>

namespace brum {

/// The kinds of interpreted symbols that come in families: one symbol per sort, width or index.
///
/// The values are fixed: printers keep tables keyed by them. Symbols of which there is only one
/// (the Boolean connectives, the arithmetic operators) and numerals have no tag.
struct SymbolTag {
  enum tag : std::uint32_t {
    none = 0,
    equality = 11,
    if_then_else = 12,
    int_modular_congruence = 13,
    bv_concat = 14,
    bv_extract = 15,
    bv_not = 16,
    bv_and = 17,
    bv_or = 18,
    bv_xor = 19,
    bv_ult = 20,
    bv_slt = 21,
    bv_ule = 22,
    bv_sle = 23,
    bv_comp = 24,
    bv_neg = 25,
    bv_add = 26,
    bv_sub = 27,
    bv_mul = 28,
    bv_udiv = 29,
    bv_sdiv = 30,
    bv_urem = 31,
    bv_srem = 32,
    bv_shl = 33,
    bv_lshr = 34,
    bv_ashr = 35,
    bv_rotate_left = 36,
    bv_rotate_right = 37,
    bv_zero_extend = 38,
    bv_sign_extend = 39,
    array_select = 40,
    array_store = 41,
  };
};

}  // namespace brum

#endif  // BRUM_TERMS_SYMBOL_TAG_H
