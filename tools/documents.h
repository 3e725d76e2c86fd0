#ifndef BRUM_TOOLS_DOCUMENTS_H
#define BRUM_TOOLS_DOCUMENTS_H

#include <ostream>
#include <string>

#include "brum/readers/script.h"
#include "brum/terms/term_manager.h"
#include "brum/utils/exception.h"
#include "command_line.h"
#include "diagnostics.h"
#include "statistics.h"

namespace brum::tools {

/// Thrown when the asked form cannot say what the input says; what() tells why.
class CannotExpress : public Exception {
 public:
  explicit CannotExpress(const std::string& msg) : Exception(msg) {}
};

/// Thrown when the user asked for a query that the input does not have.
class NoSuchQuery : public Exception {
 public:
  explicit NoSuchQuery(const std::string& msg) : Exception(msg) {}
};

/// What a document is made from.
struct DocumentSource {
  const CommandLine& line;
  const Script& script;
  TermManager& manager;
  Diagnostics& diagnostics;
  Statistics& statistics;

  /// The text of the logic to state, empty for none: the user's, else one that holds what was read.
  /// Throws CannotExpress when the form has no text for its name.
  std::string logic() const;

  /// The status to state, empty for none: the user's, else `of_input` if it is a status at all.
  std::string status(const std::string& of_input) const;
};

/// Writes the input in the form that the command line asks for and counts what was written. Throws
/// CannotExpress, NoSuchQuery and what the printers throw.
void write_document(const DocumentSource& source, std::ostream& out);

/// Writes the input's assertions, push, pop and check-sat in their order; declarations come first.
void write_trace(const DocumentSource& source, std::ostream& out);

/// Throws CannotExpress when a symbol of the terms has a name whose text would not stand for it.
void require_writable_names(const DocumentSource& source, const std::vector<const Term*>& terms);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_DOCUMENTS_H
