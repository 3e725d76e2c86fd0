#ifndef BRUM_READERS_VALUE_H
#define BRUM_READERS_VALUE_H

#include "brum/terms/term.h"

namespace brum {

/// What a piece of text denotes: a term, or an Int term that stands where a Real is meant.
///
/// A store has no conversion from Int to Real: it takes an Int argument where a Real is wanted, and
/// version 2 printers then write `to_real`. So `(to_real i)` denotes the term `i` with `as_real`
/// set, and so does the decimal `3.0` in a logic that has integers too. Operators that exist for
/// both sorts (`+`, `<=`, `=`, `ite`) look at the flag.
struct Value {
  const Term* term = nullptr;
  bool as_real = false;  // only with a term of sort Int

  bool operator==(const Value&) const = default;
};

}  // namespace brum

#endif  // BRUM_READERS_VALUE_H
