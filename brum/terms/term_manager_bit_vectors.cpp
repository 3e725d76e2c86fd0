#include <bit>
#include <limits>
#include <optional>

#include "brum/terms/operator_names.h"
#include "brum/terms/sort_checks.h"
#include "brum/terms/term_manager.h"

// The builders of bit-vector terms.

namespace brum {

namespace {

/// True when a bit-vector of `width` bits holds `v`.
bool fits_width(const QNumber& v, std::size_t width) {
  if (!v.is_integer() || v.sign() < 0) {
    return false;
  }
  if (const std::optional<std::uint64_t> small = v.to_uint64()) {
    return static_cast<std::size_t>(std::bit_width(*small)) <= width;
  }
  return mpz_sizeinbase(v.num_mpz().get_mpz_t(), 2) <= width;
}

bool is_comparison(SymbolTag::tag tag) {
  return tag == SymbolTag::bv_ult || tag == SymbolTag::bv_slt || tag == SymbolTag::bv_ule ||
         tag == SymbolTag::bv_sle;
}

}  // namespace

const Term* TermManager::make_bv_number(const QNumber& v, std::size_t width) {
  const DataType* sort = make_bv_type(width);
  if (!fits_width(v, width)) {
    throw error("bit-vector: the value " + v.to_str() + " does not fit in " +
                std::to_string(width) + " bits, expected 0 <= value < 2^width");
  }
  return apply(numerals_.numeral(v, sort), {});
}

const Term* TermManager::apply_bv_unary(SymbolTag::tag tag, const Term* a) {
  require_bv(operator_name(tag).name, a);
  const DataType* sort = a->sort();
  return apply(operators_.get({.tag = tag, .first_sort = sort}, sort, {sort}), {a});
}

const Term* TermManager::apply_bv_binary(SymbolTag::tag tag, const Term* a, const Term* b) {
  require_bv(operator_name(tag).name, a);
  const DataType* sort = a->sort();
  require_sort(operator_name(tag).name, b, sort);
  const DataType* result = sort;
  if (is_comparison(tag)) {
    result = get_bool_type();
  } else if (tag == SymbolTag::bv_comp) {
    result = make_bv_type(1);
  }
  return apply(operators_.get({.tag = tag, .first_sort = sort}, result, {sort, sort}), {a, b});
}

const Term* TermManager::make_bvnot(const Term* a) {
  return apply_bv_unary(SymbolTag::bv_not, a);
}

const Term* TermManager::make_bvneg(const Term* a) {
  return apply_bv_unary(SymbolTag::bv_neg, a);
}

const Term* TermManager::make_bvand(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_and, a, b);
}

const Term* TermManager::make_bvor(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_or, a, b);
}

const Term* TermManager::make_bvxor(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_xor, a, b);
}

const Term* TermManager::make_bvult(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_ult, a, b);
}

const Term* TermManager::make_bvslt(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_slt, a, b);
}

const Term* TermManager::make_bvule(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_ule, a, b);
}

const Term* TermManager::make_bvsle(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_sle, a, b);
}

const Term* TermManager::make_bvcomp(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_comp, a, b);
}

const Term* TermManager::make_bvadd(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_add, a, b);
}

const Term* TermManager::make_bvsub(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_sub, a, b);
}

const Term* TermManager::make_bvmul(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_mul, a, b);
}

const Term* TermManager::make_bvudiv(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_udiv, a, b);
}

const Term* TermManager::make_bvsdiv(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_sdiv, a, b);
}

const Term* TermManager::make_bvurem(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_urem, a, b);
}

const Term* TermManager::make_bvsrem(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_srem, a, b);
}

const Term* TermManager::make_bvshl(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_shl, a, b);
}

const Term* TermManager::make_bvlshr(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_lshr, a, b);
}

const Term* TermManager::make_bvashr(const Term* a, const Term* b) {
  return apply_bv_binary(SymbolTag::bv_ashr, a, b);
}

const Term* TermManager::make_concat(const Term* a, const Term* b) {
  const std::size_t high = require_bv("concat", a);
  const std::size_t low = require_bv("concat", b);
  if (high > std::numeric_limits<std::size_t>::max() - low) {
    throw error("concat: the widths add up to 2^64 bits or more, expected fewer");
  }
  const OperatorKey key{
      .tag = SymbolTag::bv_concat, .first_sort = a->sort(), .second_sort = b->sort()};
  return apply(operators_.get(key, make_bv_type(high + low), {a->sort(), b->sort()}), {a, b});
}

const Term* TermManager::make_extract(std::size_t msb, std::size_t lsb, const Term* a) {
  const std::size_t width = require_bv("extract", a);
  if (msb < lsb || msb >= width) {
    throw error("extract: bits " + std::to_string(msb) + " to " + std::to_string(lsb) + " of " +
                std::to_string(width) + ", expected width > high >= low");
  }
  const OperatorKey key{.tag = SymbolTag::bv_extract,
                        .first_index = msb,
                        .second_index = lsb,
                        .first_sort = a->sort()};
  return apply(operators_.get(key, make_bv_type(msb - lsb + 1), {a->sort()}), {a});
}

const Term* TermManager::apply_bv_indexed(SymbolTag::tag tag, std::size_t index,
                                          std::size_t result_width, const Term* a) {
  const OperatorKey key{.tag = tag, .first_index = index, .first_sort = a->sort()};
  return apply(operators_.get(key, make_bv_type(result_width), {a->sort()}), {a});
}

const Term* TermManager::make_rotate_left(std::size_t n, const Term* a) {
  return apply_bv_indexed(SymbolTag::bv_rotate_left, n, require_bv("rotate_left", a), a);
}

const Term* TermManager::make_rotate_right(std::size_t n, const Term* a) {
  return apply_bv_indexed(SymbolTag::bv_rotate_right, n, require_bv("rotate_right", a), a);
}

const Term* TermManager::make_extended(SymbolTag::tag tag, std::size_t n, const Term* a) {
  const std::string_view name = operator_name(tag).name;
  const std::size_t width = require_bv(name, a);
  if (n > std::numeric_limits<std::size_t>::max() - width) {
    throw error(std::string(name) + ": the width becomes 2^64 bits or more, expected fewer");
  }
  return apply_bv_indexed(tag, n, width + n, a);
}

const Term* TermManager::make_zero_extend(std::size_t n, const Term* a) {
  return make_extended(SymbolTag::bv_zero_extend, n, a);
}

const Term* TermManager::make_sign_extend(std::size_t n, const Term* a) {
  return make_extended(SymbolTag::bv_sign_extend, n, a);
}

bool TermManager::is_bv_extract(const Symbol* symbol, std::size_t* msb, std::size_t* lsb,
                                std::size_t* width) const {
  const bool found = is_indexed(symbol, SymbolTag::bv_extract, msb, width);
  if (found && lsb != nullptr) {
    *lsb = operators_.key_of(symbol)->second_index;
  }
  return found;
}

bool TermManager::is_bv_rotate_left(const Symbol* symbol, std::size_t* amount,
                                    std::size_t* width) const {
  return is_indexed(symbol, SymbolTag::bv_rotate_left, amount, width);
}

bool TermManager::is_bv_rotate_right(const Symbol* symbol, std::size_t* amount,
                                     std::size_t* width) const {
  return is_indexed(symbol, SymbolTag::bv_rotate_right, amount, width);
}

bool TermManager::is_bv_zero_extend(const Symbol* symbol, std::size_t* amount,
                                    std::size_t* width) const {
  return is_indexed(symbol, SymbolTag::bv_zero_extend, amount, width);
}

bool TermManager::is_bv_sign_extend(const Symbol* symbol, std::size_t* amount,
                                    std::size_t* width) const {
  return is_indexed(symbol, SymbolTag::bv_sign_extend, amount, width);
}

bool TermManager::is_indexed(const Symbol* symbol, SymbolTag::tag tag, std::size_t* amount,
                             std::size_t* width) const {
  const OperatorKey* key = operators_.key_of(symbol);
  if (key == nullptr || key->tag != tag) {
    return false;
  }
  if (amount != nullptr) {
    *amount = key->first_index;
  }
  if (width != nullptr) {
    *width = key->first_sort->width();
  }
  return true;
}

}  // namespace brum
