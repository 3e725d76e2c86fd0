#ifndef BRUM_READERS_SMTLIB1_BIT_VECTORS_H
#define BRUM_READERS_SMTLIB1_BIT_VECTORS_H

#include <cstddef>
#include <string_view>

#include "brum/numbers/qnumber.h"
#include "brum/readers/token.h"
#include "brum/terms/term_manager.h"

namespace brum {

/// Takes the first index off a text of indices such as `7:4`, which must not be empty.
QNumber take_index(std::string_view& indices);

/// Takes the first index off as a width of bit-vectors. Throws TermManager::error when it is
/// missing, 0 or above 4294967295.
std::size_t take_width(std::string_view& indices);

/// Gives the bit-vector that a symbol of SMT-LIB 1.2 denotes: `bv5[8]`, `bvbin0101`, `bvhex0A`,
/// `bit0`, `bit1`, and `bv5` alone for 32 bits; null for any other symbol. Throws
/// TermManager::error for a number that the width does not hold.
const Term* read_bit_vector(TermManager& manager, const Token& token);

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB1_BIT_VECTORS_H
