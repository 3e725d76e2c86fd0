#ifndef BRUM_PRINTERS_RESERVE_TEXT_H
#define BRUM_PRINTERS_RESERVE_TEXT_H

#include <cstddef>
#include <ostream>

#include "brum/utils/export.h"

namespace brum {

/// Gives a std::ostringstream or std::stringstream that holds nothing or a few bytes room for so
/// many more: it begins with 512 bytes otherwise, and copies its text whenever it doubles them.
/// Text and positions stay as they are. Does nothing to other streams, nor to one whose text lies
/// outside of its buffer object, perhaps in somebody's array, nor where there is not so much
/// memory.
BRUM_EXPORT void reserve_text(std::ostream& out, std::size_t bytes) noexcept;

}  // namespace brum

#endif  // BRUM_PRINTERS_RESERVE_TEXT_H
