#ifndef BRUM_READERS_SMTLIB1_OPERATORS_H
#define BRUM_READERS_SMTLIB1_OPERATORS_H

#include <optional>
#include <vector>

#include "brum/readers/logic_name.h"
#include "brum/readers/smtlib2_operators.h"

namespace brum {

/// The operators of SMT-LIB 1.2: those of version 2 under the names that they have in version 1,
/// and the few that only version 1 has. Operators of version 2 that version 1 lacks are there too,
/// as long as a text does not declare their names. No two have one name.
const std::vector<Operator>& smtlib1_operators();

/// Whether a text of this logic may declare the name of an operator from smtlib1_operators(): the
/// theories of version 1 lack it, or the logic lacks its theory.
bool may_be_declared(const Operator& op, const std::optional<LogicFeatures>& logic);

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB1_OPERATORS_H
