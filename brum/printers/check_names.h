#ifndef BRUM_PRINTERS_CHECK_NAMES_H
#define BRUM_PRINTERS_CHECK_NAMES_H

#include <string>
#include <string_view>
#include <vector>

#include "brum/terms/term_manager.h"
#include "brum/utils/export.h"

namespace brum {

/// A symbol that must not be written, and why: a phrase that goes on from the symbol's name.
struct NameProblem {
  const Symbol* symbol;
  std::string reason;
};

/// Lists the user symbols of `terms` whose text in version 1.2 (`v1_format` true) or version 2
/// would not stand for them alone: it ends early or swallows what follows (a bar or a backslash in
/// version 2), is empty, a reserved word or a symbol of the theories, or is the text of another of
/// these symbols too. The printers write such names all the same; a caller that takes names from
/// strangers asks here first.
///
/// The order is that in which the terms mention the symbols. Throws std::bad_alloc.
BRUM_EXPORT std::vector<NameProblem> check_names(const TermManager& manager,
                                                 const std::vector<const Term*>& terms,
                                                 bool v1_format);

/// The same for `symbols`, each once, whichever terms mention them: where these are all that there
/// are and none has a problem, no term needs to be looked at. The order is theirs.
BRUM_EXPORT std::vector<NameProblem> check_names(const std::vector<const Symbol*>& symbols,
                                                 bool v1_format);

/// True when `name`, written without bars, is a reserved word of SMT-LIB 2.6 or one of its
/// commands.
BRUM_EXPORT bool is_reserved_word(std::string_view name);

}  // namespace brum

#endif  // BRUM_PRINTERS_CHECK_NAMES_H
