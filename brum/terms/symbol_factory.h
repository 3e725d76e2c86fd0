#ifndef BRUM_TERMS_SYMBOL_FACTORY_H
#define BRUM_TERMS_SYMBOL_FACTORY_H

#include <string_view>

#include "brum/terms/arena.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"

namespace brum {

class NumeralTable;
class QNumber;

/// The symbol of a number: every numeral is one.
class NumeralSymbol : public Symbol {
 public:
  /// Gives a symbol as what it is, null when it is no numeral.
  static const NumeralSymbol* from(const Symbol* symbol) {
    return symbol->numeral_ ? static_cast<const NumeralSymbol*>(symbol) : nullptr;
  }

  const NumeralTable* const table;  // that holds it
  const QNumber* value = nullptr;   // held there too, once it is

 private:
  friend class SymbolFactory;
  NumeralSymbol(std::string_view digits, const DataType* sort, const NumeralTable& holder)
      : Symbol(digits, 0, sort, true, true, SymbolTag::none), table(&holder) {}
};

/// Places symbols in an arena. Makes a new symbol at each call; keeping them apart or together is
/// the business of the tables that call it.
class BRUM_EXPORT SymbolFactory {
 public:
  explicit SymbolFactory(Arena& arena) : arena_(arena) {}

  /// A symbol of the user's; the name is copied. Throws std::bad_alloc.
  const Symbol* make_user_symbol(std::string_view name, const DataType* type) {
    return make(name, type, false, SymbolTag::none);
  }

  /// A symbol with a meaning of its own; the name is copied. Throws std::bad_alloc.
  const Symbol* make_interpreted_symbol(std::string_view name, const DataType* type,
                                        SymbolTag::tag tag = SymbolTag::none) {
    return make(name, type, true, tag);
  }

  /// The symbol of a number, named by its digits; the name is copied. `table` is yet to say its
  /// value. Throws std::bad_alloc.
  NumeralSymbol* make_numeral_symbol(std::string_view name, const DataType* type,
                                     const NumeralTable& table) {
    const std::string_view kept = arena_.copy(name);
    void* const place = arena_.allocate(sizeof(NumeralSymbol));
    return new (place) NumeralSymbol(kept, type, table);
  }

 private:
  const Symbol* make(std::string_view name, const DataType* type, bool is_interpreted,
                     SymbolTag::tag tag) {
    const bool is_function = type->kind() == DataType::Kind::function;
    const std::uint64_t arity = is_function ? type->num_components() - 1 : 0;
    const std::string_view kept = arena_.copy(name);
    void* place = arena_.allocate(sizeof(Symbol));
    return new (place) Symbol(kept, arity, type, is_interpreted, false, tag);
  }

  Arena& arena_;
};

}  // namespace brum

#endif  // BRUM_TERMS_SYMBOL_FACTORY_H
