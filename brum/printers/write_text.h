#ifndef BRUM_PRINTERS_WRITE_TEXT_H
#define BRUM_PRINTERS_WRITE_TEXT_H

#include <ostream>
#include <string_view>

namespace brum {

/// Writes `text` as one unformatted insertion: flags, width, fill and locale of the stream have no
/// part in it.
inline void write_text(std::ostream& out, std::string_view text) {
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace brum

#endif  // BRUM_PRINTERS_WRITE_TEXT_H
