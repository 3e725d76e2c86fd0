#ifndef BRUM_PRINTERS_SMTLIB_IDENTIFIERS_H
#define BRUM_PRINTERS_SMTLIB_IDENTIFIERS_H

#include <string>
#include <string_view>

#include "brum/utils/export.h"

namespace brum {

/// Gives the identifier of SMT-LIB 1.2 that stands for a user's name: the name where it is one,
/// else the name with an underscore before it (unless it begins with a letter or an underscore) and
/// every byte but letters, digits, full stops and underscores written as `_h`, its value as a
/// signed byte, `_`. Different names may give one identifier.
BRUM_EXPORT std::string v1_identifier(std::string_view name);

/// True when v1_identifier() gives the name as it is.
BRUM_EXPORT bool is_v1_identifier(std::string_view name);

/// True when a name of SMT-LIB 2.6 is written without bars: letters, digits and ~!@$%^&*_-+=<>.?/
/// only, no digit first. True for the empty name and for reserved words.
BRUM_EXPORT bool is_simple_symbol(std::string_view name);

/// Gives the symbol of SMT-LIB 2.6 that stands for a name: the name where it is one, else the name
/// between bars, which the empty name and reserved words need too. No symbol stands for a name with
/// a bar or a backslash.
BRUM_EXPORT std::string v2_symbol(std::string_view name);

}  // namespace brum

#endif  // BRUM_PRINTERS_SMTLIB_IDENTIFIERS_H
