#ifndef BRUM_READERS_SMTLIB1_OPERATORS_H
#define BRUM_READERS_SMTLIB1_OPERATORS_H

#include <vector>

#include "brum/readers/smtlib2_operators.h"

namespace brum {

/// The operators of SMT-LIB 1.2: those of version 2 under the names that they have in version 1,
/// and the few that only version 1 has. Operators of version 2 that version 1 lacks are there too,
/// of Theory::later. No two have one name.
const std::vector<Operator>& smtlib1_operators();

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB1_OPERATORS_H
