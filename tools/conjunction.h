#ifndef BRUM_TOOLS_CONJUNCTION_H
#define BRUM_TOOLS_CONJUNCTION_H

#include <vector>

#include "brum/terms/term_manager.h"

namespace brum::tools {

/// Gives the conjunction of Boolean terms, in their order; true when there are none. Above the
/// terms it is no deeper than a row of 66 and a balanced tree, as programs that read it may
/// recurse. Throws std::bad_alloc.
const Term* conjunction(TermManager& manager, std::vector<const Term*> terms);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_CONJUNCTION_H
