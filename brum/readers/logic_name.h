#ifndef BRUM_READERS_LOGIC_NAME_H
#define BRUM_READERS_LOGIC_NAME_H

#include <optional>
#include <string>
#include <string_view>

#include "brum/utils/export.h"

namespace brum {

/// What a logic allows, as far as its name says it.
struct LogicFeatures {
  bool quantifiers = false;
  bool arrays = false;
  bool functions = false;  // uninterpreted, with arguments
  bool bit_vectors = false;
  bool floating_point = false;
  bool data_types = false;
  bool strings = false;
  bool integers = false;
  bool reals = false;
  bool beyond_difference = false;  // arithmetic that is more than differences of two variables
  bool beyond_linear = false;
  bool transcendental = false;

  bool operator==(const LogicFeatures&) const = default;
};

/// Gives what either allows.
BRUM_EXPORT LogicFeatures join(const LogicFeatures& a, const LogicFeatures& b);

/// Takes the name of a logic apart by the conventions of SMT-LIB: `QF_` for the absence of
/// quantifiers, then A or AX, UF, BV, FP, DT, S, and at the end one of IDL, RDL, LIA, LRA, LIRA,
/// NIA, NRA, NIRA (with T where there are transcendental functions). Gives nothing for a name that
/// is not made like that, such as ALL.
BRUM_EXPORT std::optional<LogicFeatures> features_of_logic(std::string_view name);

/// Gives the name of a logic that allows these features.
BRUM_EXPORT std::string logic_with(const LogicFeatures& features);

/// Gives the logic to state for a text that was read under `name` and whose rewriting added these
/// features: `name` itself where it allows them already or cannot be taken apart.
BRUM_EXPORT std::string logic_for(const std::string& name, const LogicFeatures& added);

/// Whether a numeral such as `3` is of sort Real in this logic: it has reals and no integers.
BRUM_EXPORT bool numerals_are_real(std::string_view logic);

}  // namespace brum

#endif  // BRUM_READERS_LOGIC_NAME_H
