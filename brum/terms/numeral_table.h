#ifndef BRUM_TERMS_NUMERAL_TABLE_H
#define BRUM_TERMS_NUMERAL_TABLE_H

#include "brum/numbers/qnumber.h"
#include "brum/terms/sort_table.h"
#include "brum/terms/symbol_factory.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"
#include "brum/utils/slot_table.h"

namespace brum {

/// Holds the symbols of a manager that carry a rational number: numerals, one per value and sort,
/// and modular congruences, one per modulus.
///
/// Every operation may throw std::bad_alloc and then adds nothing.
class BRUM_EXPORT NumeralTable {
 public:
  NumeralTable(SymbolFactory& factory, SortTable& sorts) : factory_(factory), sorts_(sorts) {}
  NumeralTable(const NumeralTable&) = delete;
  NumeralTable& operator=(const NumeralTable&) = delete;
  ~NumeralTable();

  /// Gives the constant of this value and sort (Int, Real or a bit-vector sort that holds it).
  const Symbol* numeral(const QNumber& value, const DataType* type);

  /// Gives the predicate on two integers that are congruent modulo `modulus`.
  const Symbol* congruence(const QNumber& modulus);

  /// Gives the value of a numeral of this table, null for any other symbol.
  const QNumber* value_of(const Symbol* symbol) const {
    return number_of(NumberSymbol::from_numeral(symbol));
  }

  /// Gives the modulus of a congruence of this table, null for any other symbol.
  const QNumber* modulus_of(const Symbol* symbol) const {
    return number_of(NumberSymbol::from_congruence(symbol));
  }

 private:
  const QNumber* number_of(const NumberSymbol* symbol) const {
    return symbol != nullptr && sorts_.holds(symbol->type) ? &symbol->number : nullptr;
  }

  template <class Make>
  const Symbol* get(const QNumber& number, const DataType* type, const Make& make);

  SymbolFactory& factory_;
  SortTable& sorts_;
  SlotTable<const NumberSymbol*> symbols_;  // a congruence has another type than any numeral
};

}  // namespace brum

#endif  // BRUM_TERMS_NUMERAL_TABLE_H
