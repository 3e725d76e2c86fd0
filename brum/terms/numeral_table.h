#ifndef BRUM_TERMS_NUMERAL_TABLE_H
#define BRUM_TERMS_NUMERAL_TABLE_H

#include <cstdint>

#include "brum/numbers/qnumber.h"
#include "brum/terms/sort_table.h"
#include "brum/terms/symbol_factory.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// Holds the symbols of a manager that carry a rational number: numerals, one per value and sort,
/// and modular congruences, one per modulus.
///
/// Every operation may throw std::bad_alloc and then adds nothing.
class BRUM_EXPORT NumeralTable {
 public:
  NumeralTable(SymbolFactory& factory, SortTable& sorts) : factory_(factory), sorts_(sorts) {}

  /// Gives the constant of this value and sort (Int, Real or a bit-vector sort that holds it).
  const Symbol* numeral(const QNumber& value, const DataType* type);

  /// Gives the predicate on two integers that are congruent modulo `modulus`.
  const Symbol* congruence(const QNumber& modulus);

  /// Gives the value of a numeral of this table, null for any other symbol.
  const QNumber* value_of(const Symbol* symbol) const {
    const NumeralSymbol* const numeral = NumeralSymbol::from(symbol);
    return numeral != nullptr && numeral->table == this ? numeral->value : nullptr;
  }

  /// Gives the modulus of a congruence, null for any other symbol.
  const QNumber* modulus_of(const Symbol* symbol) const;

 private:
  struct Key {
    QNumber value;
    const DataType* type = nullptr;
    bool operator==(const Key&) const = default;
  };
  struct HashKey {
    std::uint64_t operator()(const Key& key) const {
      return key.value.hash() ^ reinterpret_cast<std::uintptr_t>(key.type);
    }
  };

  SymbolFactory& factory_;
  SortTable& sorts_;
  hsh::HashMap<Key, const Symbol*, HashKey> numerals_;
  hsh::HashMap<Key, const Symbol*, HashKey> congruences_;
  hsh::HashMap<const Symbol*, QNumber> moduli_;
};

}  // namespace brum

#endif  // BRUM_TERMS_NUMERAL_TABLE_H
