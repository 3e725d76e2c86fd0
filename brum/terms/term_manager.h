#ifndef BRUM_TERMS_TERM_MANAGER_H
#define BRUM_TERMS_TERM_MANAGER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "brum/numbers/qnumber.h"
#include "brum/terms/arena.h"
#include "brum/terms/numeral_table.h"
#include "brum/terms/operator_table.h"
#include "brum/terms/signature.h"
#include "brum/terms/sort_table.h"
#include "brum/terms/symbol_factory.h"
#include "brum/terms/term.h"
#include "brum/terms/term_store.h"
#include "brum/utils/exception.h"
#include "brum/utils/export.h"

namespace brum {

/// Makes and owns sorts, symbols and terms.
///
/// Builds exactly what it is asked for: nothing is simplified, reordered or flattened. The same
/// sort, symbol or application always has the same address, and addresses and ids never change, so
/// that they may be compared and used as keys for as long as the manager lives. All of it dies with
/// the manager.
///
/// Every builder checks the sorts of its arguments and throws TermManager::error where they do not
/// fit, std::bad_alloc where memory ends; either way the terms of the manager are those of before.
/// An Int argument is accepted wherever a Real is wanted. Arguments must belong to this manager; a
/// null pointer is an error. Operators mean what SMT-LIB 2.6 says of the operator of that name.
///
///     TermManager mgr;
///     const Term* x = mgr.make_term(mgr.declare("x", mgr.get_int_type()));
///     const Term* bounded = mgr.make_leq(x, mgr.make_number(7));
///
/// One thread at a time.
class BRUM_EXPORT TermManager {
 public:
  /// Thrown by a builder whose arguments do not fit; what() says which and why.
  class BRUM_EXPORT error : public Exception {
   public:
    explicit error(const std::string& msg) : Exception(msg) {}
  };

  TermManager();
  TermManager(const TermManager&) = delete;
  TermManager& operator=(const TermManager&) = delete;
  ~TermManager() = default;

  // Sorts.

  const DataType* get_bool_type() const { return sorts_.boolean(); }
  const DataType* get_int_type() const { return sorts_.integer(); }
  const DataType* get_real_type() const { return sorts_.real(); }

  /// Gives the sort of bit-vectors of `width` bits. Throws error when `width` is 0.
  const DataType* make_bv_type(std::size_t width);

  /// Gives the sort of arrays from `index` to `element`, neither of them a function type.
  const DataType* make_array_type(const DataType* index, const DataType* element);

  /// Gives the uninterpreted sort of this name. Throws error when the name holds a NUL.
  const DataType* make_uninterpreted_type(const std::string& name);

  /// Gives the type of functions from `arguments` (at least one) to `result`, none of them a
  /// function type.
  const DataType* make_function_type(const std::vector<const DataType*>& arguments,
                                     const DataType* result);

  // Symbols.

  /// Gives the user's constant, function or predicate `name`; declares it at the first call. A name
  /// may hold any bytes but NUL, and may be one of SMT-LIB's own. Throws error when the name is
  /// declared under another sort or holds a NUL.
  const Symbol* declare(const std::string& name, const DataType* type);

  /// Gives an interpreted symbol that no printer knows, apart from the user's symbols of that name.
  /// Throws as declare() does, among interpreted symbols declared this way.
  const Symbol* declare_interpreted(const std::string& name, const DataType* type);

  /// The user's symbols by name.
  const Signature* get_signature() const { return &signature_; }
  Signature* get_signature() { return &signature_; }

  // The symbols of the Boolean constants, the connectives and the arithmetic operators, one each.

  const Symbol* get_true_symbol() const { return true_; }
  const Symbol* get_false_symbol() const { return false_; }
  const Symbol* get_and_symbol() const { return and_; }
  const Symbol* get_or_symbol() const { return or_; }
  const Symbol* get_not_symbol() const { return not_; }
  const Symbol* get_iff_symbol() const { return iff_; }
  const Symbol* get_int_plus_symbol() const { return int_plus_; }
  const Symbol* get_real_plus_symbol() const { return real_plus_; }
  const Symbol* get_int_times_symbol() const { return int_times_; }
  const Symbol* get_real_times_symbol() const { return real_times_; }
  const Symbol* get_int_leq_symbol() const { return int_leq_; }
  const Symbol* get_real_leq_symbol() const { return real_leq_; }
  const Symbol* get_floor_symbol() const { return floor_; }

  /// Give the equality or if-then-else symbol over any sort of terms but Bool, for which there is
  /// none. Throw error for Bool and for function types.
  const Symbol* get_equality_symbol(const DataType* sort);
  const Symbol* get_ite_symbol(const DataType* sort);

  // Terms.

  /// Applies `symbol` to as many terms as its arity says.
  const Term* make_term(const Symbol* symbol, const std::vector<const Term*>& children = {});

  // The Boolean constants and connectives, of Bools; nothing is simplified.

  const Term* make_true();
  const Term* make_false();
  const Term* make_not(const Term* a);
  const Term* make_and(const Term* a, const Term* b);
  const Term* make_or(const Term* a, const Term* b);
  const Term* make_iff(const Term* a, const Term* b);

  /// Equality of two terms of one sort, or of an Int and a Real as reals; of two Bools make_iff().
  const Term* make_equal(const Term* a, const Term* b);

  /// If-then-else; for Bool branches (and (or (not c) a) (or c b)), for an Int and a Real branch an
  /// if-then-else of sort Real.
  const Term* make_ite(const Term* c, const Term* a, const Term* b);

  /// A numeral: Int when the value is integral, else Real.
  const Term* make_number(const QNumber& v);

  /// A numeral of sort Int (integral values only) or Real.
  const Term* make_number(const QNumber& v, const DataType* type);

  /// Arithmetic: over Int when both arguments are Int, else over Real.
  const Term* make_plus(const Term* a, const Term* b);
  const Term* make_times(const Term* a, const Term* b);
  const Term* make_leq(const Term* a, const Term* b);

  /// The largest integer not above the real `a`; `to_int` of SMT-LIB.
  const Term* make_floor(const Term* a);

  /// True when the integers `a` and `b` differ by a multiple of `modulus`, a positive integer.
  const Term* make_int_modular_congruence(const QNumber& modulus, const Term* a, const Term* b);

  /// The bit-vector of `width` bits that stands for `v`, 0 <= v < 2^width.
  const Term* make_bv_number(const QNumber& v, std::size_t width);

  const Term* make_bvnot(const Term* a);
  const Term* make_bvneg(const Term* a);

  // Bit-vector operations of two arguments of one width; comparisons are Bool, bvcomp is one bit.
  const Term* make_bvand(const Term* a, const Term* b);
  const Term* make_bvor(const Term* a, const Term* b);
  const Term* make_bvxor(const Term* a, const Term* b);
  const Term* make_bvult(const Term* a, const Term* b);
  const Term* make_bvslt(const Term* a, const Term* b);
  const Term* make_bvule(const Term* a, const Term* b);
  const Term* make_bvsle(const Term* a, const Term* b);
  const Term* make_bvcomp(const Term* a, const Term* b);
  const Term* make_bvadd(const Term* a, const Term* b);
  const Term* make_bvsub(const Term* a, const Term* b);
  const Term* make_bvmul(const Term* a, const Term* b);
  const Term* make_bvudiv(const Term* a, const Term* b);
  const Term* make_bvsdiv(const Term* a, const Term* b);
  const Term* make_bvurem(const Term* a, const Term* b);
  const Term* make_bvsrem(const Term* a, const Term* b);
  const Term* make_bvshl(const Term* a, const Term* b);
  const Term* make_bvlshr(const Term* a, const Term* b);
  const Term* make_bvashr(const Term* a, const Term* b);

  /// The bits of `a` above those of `b`; the widths add up.
  const Term* make_concat(const Term* a, const Term* b);

  /// Bits `msb` down to `lsb` of `a`, counted from 0; width > msb >= lsb.
  const Term* make_extract(std::size_t msb, std::size_t lsb, const Term* a);

  /// Rotations by `n` bits, which may exceed the width.
  const Term* make_rotate_left(std::size_t n, const Term* a);
  const Term* make_rotate_right(std::size_t n, const Term* a);

  /// Extensions by `n` bits, which may be 0.
  const Term* make_zero_extend(std::size_t n, const Term* a);
  const Term* make_sign_extend(std::size_t n, const Term* a);

  const Term* make_select(const Term* array, const Term* index);
  const Term* make_store(const Term* array, const Term* index, const Term* element);

  // Queries. Each kind query gives whether its subject is of that kind and, if so, fills the
  // outputs that are not null. None throws but those that fill a vector or a QNumber.

  /// True for every symbol that was not made by declare().
  static bool is_interpreted(const Symbol* symbol) { return symbol->interpreted_; }

  /// True for the symbol of a number, which is named by its digits.
  static bool is_numeral(const Symbol* symbol) { return symbol->numeral_; }

  /// Gives the tag of a tagged operator, nothing for any other symbol.
  static std::optional<SymbolTag::tag> get_tag(const Symbol* symbol) {
    return symbol->tag_ == SymbolTag::none ? std::nullopt : std::optional(symbol->tag_);
  }

  /// Gives the value of a numeral (a bit-vector's as a number from 0 up), null for any other
  /// symbol.
  const QNumber* get_number(const Symbol* symbol) const { return numerals_.value_of(symbol); }

  /// True for the equality symbol of any sort; the equivalence of Booleans is none of them.
  static bool is_equality(const Symbol* symbol) { return symbol->tag_ == SymbolTag::equality; }

  static bool is_bv_type(const DataType* sort, std::size_t* width);
  static bool is_array_type(const DataType* sort, const DataType** index, const DataType** element);
  static bool is_function_type(const DataType* sort, std::vector<const DataType*>* arguments,
                               const DataType** result);
  static bool is_uninterpreted_type(const DataType* sort);
  static bool is_term_ite(const Symbol* symbol, const DataType** sort);
  bool is_int_modular_congruence(const Symbol* symbol, QNumber* modulus) const;

  /// Bit indices, and the width of the argument.
  bool is_bv_extract(const Symbol* symbol, std::size_t* msb, std::size_t* lsb,
                     std::size_t* width) const;

  /// The amount in bits, and the width of the argument.
  bool is_bv_rotate_left(const Symbol* symbol, std::size_t* amount, std::size_t* width) const;
  bool is_bv_rotate_right(const Symbol* symbol, std::size_t* amount, std::size_t* width) const;
  bool is_bv_zero_extend(const Symbol* symbol, std::size_t* amount, std::size_t* width) const;
  bool is_bv_sign_extend(const Symbol* symbol, std::size_t* amount, std::size_t* width) const;

  /// The number of distinct terms made so far, which is also the highest id.
  std::size_t num_terms() const { return terms_.size(); }

  /// The number of argument positions of the manager's terms that hold `term`.
  static std::size_t num_uses(const Term* term) { return TermStore::uses(term); }

  /// Fetches what num_uses() looks at into the cache.
  [[gnu::always_inline]] static void prefetch_uses(const Term* term) {
    TermStore::prefetch_uses(term);
  }

 private:
  const Symbol* make_operator(std::string_view name, const DataType* result,
                              std::initializer_list<const DataType*> arguments);
  const Symbol* declare_in(Signature& signature, const std::string& name, const DataType* type,
                           bool interpreted);
  const Term* apply(const Symbol* symbol, std::initializer_list<const Term*> arguments) {
    return terms_.apply(symbol, {arguments.begin(), arguments.size()});
  }
  const Term* apply_connective(std::string_view name, const Symbol* symbol,
                               std::initializer_list<const Term*> arguments);
  const Term* apply_arithmetic(std::string_view name, const Symbol* over_int,
                               const Symbol* over_real, const Term* a, const Term* b);
  const Term* apply_bv_unary(SymbolTag::tag tag, const Term* a);
  const Term* apply_bv_binary(SymbolTag::tag tag, const Term* a, const Term* b);
  const Term* apply_bv_indexed(SymbolTag::tag tag, std::size_t index, std::size_t result_width,
                               const Term* a);
  const Term* make_extended(SymbolTag::tag tag, std::size_t n, const Term* a);
  bool is_indexed(const Symbol* symbol, SymbolTag::tag tag, std::size_t* amount,
                  std::size_t* width) const;

  Arena arena_;
  SortTable sorts_;
  SymbolFactory factory_;
  Signature signature_;
  Signature untagged_;  // what declare_interpreted() made
  OperatorTable operators_;
  NumeralTable numerals_;
  TermStore terms_;

  const Symbol* true_;
  const Symbol* false_;
  const Symbol* and_;
  const Symbol* or_;
  const Symbol* not_;
  const Symbol* iff_;
  const Symbol* int_plus_;
  const Symbol* real_plus_;
  const Symbol* int_times_;
  const Symbol* real_times_;
  const Symbol* int_leq_;
  const Symbol* real_leq_;
  const Symbol* floor_;
};

}  // namespace brum

#endif  // BRUM_TERMS_TERM_MANAGER_H
