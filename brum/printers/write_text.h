#ifndef BRUM_PRINTERS_WRITE_TEXT_H
#define BRUM_PRINTERS_WRITE_TEXT_H

#include <ostream>
#include <string_view>

namespace brum {

/// Sets the bad bit of `out`, whose buffer has thrown; throws that exception on if `out` is to.
void report_thrown_by_buffer(std::ostream& out);

/// Writes `text` as one unformatted insertion: flags, width, fill and locale of the stream have no
/// part in it. Does what std::ostream::write does, but goes straight to the buffer of a stream that
/// needs neither a check nor a flush first.
inline void write_text(std::ostream& out, std::string_view text) {
  const auto size = static_cast<std::streamsize>(text.size());
  const bool is_flushed = (out.flags() & std::ios_base::unitbuf) != 0 || out.tie() != nullptr;
  if (is_flushed || !out.good()) {
    out.write(text.data(), size);
    return;
  }
  bool is_written = false;
  try {
    is_written = out.rdbuf()->sputn(text.data(), size) == size;
  } catch (...) {
    report_thrown_by_buffer(out);
    return;
  }
  if (!is_written) {
    out.setstate(std::ios_base::badbit);
  }
}

}  // namespace brum

#endif  // BRUM_PRINTERS_WRITE_TEXT_H
