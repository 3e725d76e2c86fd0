#ifndef BRUM_READERS_SMTLIB2_READER_H
#define BRUM_READERS_SMTLIB2_READER_H

#include <istream>

#include "brum/readers/read_error.h"
#include "brum/readers/reader_options.h"
#include "brum/readers/script.h"
#include "brum/readers/script_handler.h"
#include "brum/terms/term_manager.h"
#include "brum/utils/export.h"

namespace brum {

/// Reads scripts of SMT-LIB 2.6 into a term manager.
///
/// It holds one buffer of the text, the names and what the manager holds; nothing recurses on the
/// depth of the text, and time is linear in text and terms. Quantifiers, floating point, strings,
/// datatypes and recursive definitions cannot be held and are refused.
/// What the store has no operator for is rewritten into what means the same. Terms that a version 2
/// printer wrote come back as the very same terms, except that
/// - an integral numeral of sort Real is an Int where the logic is not purely real,
/// - an invented name of a sort needs ReaderOptions::sorts.
///
///     Script script;
///     SmtLib2Reader(mgr).read(in, script);
class BRUM_EXPORT SmtLib2Reader {
 public:
  /// `manager` must outlive the reader.
  explicit SmtLib2Reader(TermManager& manager, ReaderOptions options = {});

  /// Reads a script up to its end or to `exit` and tells `handler` what it says. Throws ReadError
  /// for a text that is wrong or cannot be held, Exception for a stream that cannot be read. Each
  /// call begins anew: nothing of earlier texts is in scope.
  void read(std::istream& in, ScriptHandler& handler);

  /// Reads one term, which must be all of the text; meant for use_signature. Throws as read() does.
  const Term* read_term(std::istream& in);

 private:
  TermManager& manager_;
  ReaderOptions options_;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB2_READER_H
