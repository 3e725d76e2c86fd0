#ifndef BRUM_TOOLS_INTRODUCED_H
#define BRUM_TOOLS_INTRODUCED_H

#include <ostream>

#include "documents.h"

namespace brum::tools {

/// Writes what the symbols stand for that reading made up, as SMT-LIB 2 `define-fun` commands over
/// the symbols of the input, each after those that it mentions. With them in place of the
/// declarations a document means what the input means, symbol by symbol. Symbols without a meaning
/// of their own, those for a large `distinct`, are listed in comments `; NAME: distinct`.
///
/// Throws CannotExpress for a symbol whose text would not stand for it.
void write_introduced(const DocumentSource& source, std::ostream& out);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_INTRODUCED_H
