#ifndef BRUM_READERS_SMTLIB1_READER_H
#define BRUM_READERS_SMTLIB1_READER_H

#include <istream>

#include "brum/readers/read_error.h"
#include "brum/readers/reader_options.h"
#include "brum/readers/script.h"
#include "brum/readers/script_handler.h"
#include "brum/terms/term_manager.h"
#include "brum/utils/export.h"

namespace brum {

/// Reads benchmarks of SMT-LIB 1.2 into a term manager.
///
/// A handler is told of each assumption and of the formula as assertions, in their order, and then
/// of one check_sat with the benchmark's status. Texts in braces come as strings of SMT-LIB 2.6. A
/// logic's name comes without an index (`QF_UFBV[32]`). Quantifiers cannot be held and are refused.
/// Operators mean what those of SMT-LIB 2.6 do: what version 1 leaves open (a bit-vector divided by
/// zero, say) is as there. A text may also use operators that came later (`div`, `to_int`), unless
/// it declares their names, and it may declare those of theories that its logic does not have.
///
/// It holds one buffer of the text, the names and what the manager holds; nothing recurses on the
/// depth of the text, and time is linear in text and terms.
///
/// Terms that a version 1 printer wrote come back as the very same terms, except that
/// - a symbol whose name the printer rewrote comes back under the name that was written,
/// - an invented name of a sort needs ReaderOptions::sorts,
/// - an integral numeral of sort Real is an Int where the logic is not purely real, and one of sort
///   Int a Real where it is,
/// - `+ * <= = ite` over reals whose arguments are all Int are those over Int, since version 1 does
///   not write `to_real`; for ite the condition does not count,
/// - an array from Int to Int is one from Index to Element in QF_AX.
///
///     Script script;
///     SmtLib1Reader(mgr).read(in, script);
class BRUM_EXPORT SmtLib1Reader {
 public:
  /// `manager` must outlive the reader.
  explicit SmtLib1Reader(TermManager& manager, ReaderOptions options = {});

  /// Reads a benchmark, which must be all of the text, and tells `handler` what it says. Throws
  /// ReadError for a text that is wrong or cannot be held, Exception for a stream that cannot be
  /// read. Each call begins anew: nothing of earlier texts is in scope.
  void read(std::istream& in, ScriptHandler& handler);

  /// Reads one term or formula, which must be all of the text; meant for use_signature. Throws as
  /// read() does.
  const Term* read_term(std::istream& in);

 private:
  TermManager& manager_;
  ReaderOptions options_;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB1_READER_H
