#include "brum/terms/numeral_table.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "brum/terms/operator_names.h"

namespace brum {

NumeralTable::~NumeralTable() {
  symbols_.for_each([](const NumberSymbol* symbol) { symbol->~NumberSymbol(); });
}

/// Gives the symbol of this number and type, which `make()` makes if it is not there yet.
template <class Make>
inline const Symbol* NumeralTable::get(const QNumber& number, const DataType* type,
                                       const Make& make) {
  const std::uint64_t hash = number.hash() ^ reinterpret_cast<std::uintptr_t>(type);
  const auto is_it = [&](const NumberSymbol* symbol) {
    return symbol->type == type && symbol->number == number;
  };
  return symbols_.get(hash == 0 ? 1 : hash, is_it, make);
}

const Symbol* NumeralTable::numeral(const QNumber& value, const DataType* type) {
  return get(value, type, [&] { return factory_.make_numeral(value.to_str(), type, value); });
}

const Symbol* NumeralTable::congruence(const QNumber& modulus) {
  const DataType* const type =
      sorts_.function(std::array{sorts_.boolean(), sorts_.integer(), sorts_.integer()});
  const std::string_view name = operator_name(SymbolTag::int_modular_congruence).name;
  return get(modulus, type, [&] { return factory_.make_congruence(name, type, modulus); });
}

}  // namespace brum
