#include "brum/printers/reference_counts.h"

namespace brum {

void ReferenceCounts::add_term(const Term* term, const DefinitionMap* handled) {
  const auto nothing = [](const Term*) {};
  add_term(term, handled, nothing, nothing);
}

void ReferenceCounts::add_reference(const Term* term) {
  const auto nothing = [](const Term*) {};
  add_reference(term, nothing, nothing);
}

}  // namespace brum
