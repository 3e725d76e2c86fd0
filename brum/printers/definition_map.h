#ifndef BRUM_PRINTERS_DEFINITION_MAP_H
#define BRUM_PRINTERS_DEFINITION_MAP_H

#include <string>

#include "brum/terms/term.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// For every subterm already handled the string by which later text refers to it: its label if it
/// was given a definition, else its own text.
using DefinitionMap = hsh::HashMap<const Term*, std::string>;

}  // namespace brum

#endif  // BRUM_PRINTERS_DEFINITION_MAP_H
