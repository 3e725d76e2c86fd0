#include "brum/printers/declarations.h"

#include <cstddef>
#include <vector>

namespace brum {

namespace {
/// So many symbols before its turn a symbol is fetched into the cache: the set's order jumps about.
constexpr std::size_t symbols_ahead = 16;
}  // namespace

void print_declarations(TermPrinter& printer, std::ostream& out,
                        const hsh::HashSet<const DataType*>& types,
                        const hsh::HashSet<const Symbol*>& symbols) {
  for (const DataType* type : types) {
    printer.print_type_declaration(out, type);
  }
  std::vector<const Symbol*> order;
  order.reserve(symbols.size());
  symbols.for_each([&](const Symbol* symbol) { order.push_back(symbol); });
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i + symbols_ahead < order.size()) {
      __builtin_prefetch(order[i + symbols_ahead]);
    }
    printer.print_symbol_declaration(out, order[i]);
  }
}

}  // namespace brum
