#include "brum/terms/numeral_table.h"

#include <array>

#include "brum/terms/operator_names.h"

namespace brum {

const Symbol* NumeralTable::numeral(const QNumber& value, const DataType* type) {
  const Key key{value, type};
  if (const auto found = numerals_.find(key); found != numerals_.end()) {
    return found->second;
  }
  numerals_.make_room();
  NumeralSymbol* const symbol = factory_.make_numeral_symbol(value.to_str(), type, *this);
  symbol->value = &numerals_.insert_absent(key, symbol)->first.value;
  return symbol;
}

const Symbol* NumeralTable::congruence(const QNumber& modulus) {
  const Key key{modulus, sorts_.integer()};
  if (const auto found = congruences_.find(key); found != congruences_.end()) {
    return found->second;
  }
  moduli_.make_room();
  congruences_.make_room();
  constexpr SymbolTag::tag tag = SymbolTag::int_modular_congruence;
  const DataType* type =
      sorts_.function(std::array{sorts_.boolean(), sorts_.integer(), sorts_.integer()});
  const Symbol* symbol = factory_.make_interpreted_symbol(operator_name(tag).name, type, tag);
  moduli_.insert_absent(symbol, modulus);
  congruences_.insert_absent(key, symbol);
  return symbol;
}

const QNumber* NumeralTable::modulus_of(const Symbol* symbol) const {
  const auto found = moduli_.find(symbol);
  return found == moduli_.end() ? nullptr : &found->second;
}

}  // namespace brum
