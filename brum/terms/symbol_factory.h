#ifndef BRUM_TERMS_SYMBOL_FACTORY_H
#define BRUM_TERMS_SYMBOL_FACTORY_H

#include <string_view>

#include "brum/terms/arena.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"

namespace brum {

/// Places symbols in an arena. Makes a new symbol at each call; keeping them apart or together is
/// the business of the tables that call it.
class BRUM_EXPORT SymbolFactory {
 public:
  explicit SymbolFactory(Arena& arena) : arena_(arena) {}

  /// A symbol of the user's; the name is copied. Throws std::bad_alloc.
  const Symbol* make_user_symbol(std::string_view name, const DataType* type) {
    return make(name, type, {});
  }

  /// A symbol with a meaning of its own; the name is copied. Throws std::bad_alloc.
  const Symbol* make_interpreted_symbol(std::string_view name, const DataType* type,
                                        SymbolTag::tag tag = SymbolTag::none) {
    return make(name, type, {.interpreted = true, .tag = tag});
  }

  /// The symbol of a number, named by its digits; the name is copied. Throws std::bad_alloc.
  const Symbol* make_numeral_symbol(std::string_view name, const DataType* type) {
    return make(name, type, {.interpreted = true, .numeral = true});
  }

 private:
  struct Meaning {
    bool interpreted = false;
    bool numeral = false;
    SymbolTag::tag tag = SymbolTag::none;
  };

  const Symbol* make(std::string_view name, const DataType* type, Meaning meaning) {
    const bool is_function = type->kind() == DataType::Kind::function;
    const std::uint64_t arity = is_function ? type->num_components() - 1 : 0;
    const std::string_view kept = arena_.copy(name);
    void* place = arena_.allocate(sizeof(Symbol));
    return new (place) Symbol(kept, arity, type, meaning.interpreted, meaning.numeral, meaning.tag);
  }

  Arena& arena_;
};

}  // namespace brum

#endif  // BRUM_TERMS_SYMBOL_FACTORY_H
