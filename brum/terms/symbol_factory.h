#ifndef BRUM_TERMS_SYMBOL_FACTORY_H
#define BRUM_TERMS_SYMBOL_FACTORY_H

#include <cstdint>
#include <string_view>

#include "brum/numbers/qnumber.h"
#include "brum/terms/arena.h"
#include "brum/terms/sort_table.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"

namespace brum {

/// A symbol that carries a number: a numeral its value, a modular congruence its modulus.
class NumberSymbol : public Symbol {
 public:
  /// Gives a symbol as what it is, null when it is no numeral.
  static const NumberSymbol* from_numeral(const Symbol* symbol) {
    return symbol->numeral_ ? static_cast<const NumberSymbol*>(symbol) : nullptr;
  }

  /// Gives a symbol as what it is, null when it is no congruence.
  static const NumberSymbol* from_congruence(const Symbol* symbol) {
    const bool is_one = symbol->tag_ == SymbolTag::int_modular_congruence;
    return is_one ? static_cast<const NumberSymbol*>(symbol) : nullptr;
  }

  const QNumber number;

 private:
  friend class SymbolFactory;
  NumberSymbol(const Symbol& symbol, const QNumber& value) : Symbol(symbol), number(value) {}
};

/// Places symbols in an arena. Makes a new symbol at each call; keeping them apart or together is
/// the business of the tables that call it.
class BRUM_EXPORT SymbolFactory {
 public:
  /// Arena and sorts are those of one manager and must outlive what is made.
  SymbolFactory(Arena& arena, const SortTable& sorts) : arena_(arena), sorts_(sorts) {}

  /// A symbol of the user's; the name is copied. Throws std::bad_alloc.
  const Symbol* make_user_symbol(std::string_view name, const DataType* type) {
    return place<Symbol>(describe(name, type, false, false, SymbolTag::none));
  }

  /// A symbol with a meaning of its own; the name is copied. Throws std::bad_alloc.
  const Symbol* make_interpreted_symbol(std::string_view name, const DataType* type,
                                        SymbolTag::tag tag = SymbolTag::none) {
    return place<Symbol>(describe(name, type, true, false, tag));
  }

  /// The symbol of a value, named by its digits; the name is copied. The caller destroys it. Throws
  /// std::bad_alloc.
  const NumberSymbol* make_numeral(std::string_view digits, const DataType* type,
                                   const QNumber& value) {
    return place<NumberSymbol>(describe(digits, type, true, true, SymbolTag::none), value);
  }

  /// The predicate on integers that are congruent modulo `modulus`; the name is copied. The caller
  /// destroys it. Throws std::bad_alloc.
  const NumberSymbol* make_congruence(std::string_view name, const DataType* type,
                                      const QNumber& modulus) {
    constexpr SymbolTag::tag tag = SymbolTag::int_modular_congruence;
    return place<NumberSymbol>(describe(name, type, true, false, tag), modulus);
  }

 private:
  Symbol describe(std::string_view name, const DataType* type, bool is_interpreted, bool is_numeral,
                  SymbolTag::tag tag) {
    const bool is_function = type->kind() == DataType::Kind::function;
    const std::uint64_t arity = is_function ? type->num_components() - 1 : 0;
    return {arena_.copy(name), arity, type, is_interpreted, is_numeral, tag, sorts_.holds(type)};
  }

  template <class Kind, class... Parts>
  const Kind* place(const Parts&... parts) {
    return new (arena_.allocate(sizeof(Kind))) Kind(parts...);
  }

  Arena& arena_;
  const SortTable& sorts_;
};

}  // namespace brum

#endif  // BRUM_TERMS_SYMBOL_FACTORY_H
