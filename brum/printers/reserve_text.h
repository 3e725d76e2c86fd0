#ifndef BRUM_PRINTERS_RESERVE_TEXT_H
#define BRUM_PRINTERS_RESERVE_TEXT_H

#include <cstddef>
#include <ostream>

#include "brum/utils/export.h"

namespace brum {

/// Gives a std::ostringstream or std::stringstream room for so many bytes beyond those that it
/// holds, if it stands at its end: it begins with 512 bytes otherwise, and copies its text whenever
/// it doubles them. Text and positions stay as they are. Does nothing to other streams, nor where
/// there is not so much memory.
BRUM_EXPORT void reserve_text(std::ostream& out, std::size_t bytes) noexcept;

}  // namespace brum

#endif  // BRUM_PRINTERS_RESERVE_TEXT_H
