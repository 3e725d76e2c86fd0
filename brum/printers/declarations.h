#ifndef BRUM_PRINTERS_DECLARATIONS_H
#define BRUM_PRINTERS_DECLARATIONS_H

#include <ostream>

#include "brum/printers/term_printer.h"

namespace brum {

/// Writes the declarations of a document: the sorts, then the symbols, each in the order of its
/// set, by the hooks of `printer`. Throws what the hooks throw and std::bad_alloc.
void print_declarations(TermPrinter& printer, std::ostream& out,
                        const hsh::HashSet<const DataType*>& types,
                        const hsh::HashSet<const Symbol*>& symbols);

}  // namespace brum

#endif  // BRUM_PRINTERS_DECLARATIONS_H
