#ifndef BRUM_PRINTERS_WRITE_TEXT_H
#define BRUM_PRINTERS_WRITE_TEXT_H

#include <cstddef>
#include <limits>
#include <ostream>
#include <streambuf>
#include <string_view>

#include "brum/printers/copy_text.h"

namespace brum {

/// Fills the put area of a stream's buffer, which only classes derived from it can name. The buffer
/// finds the bytes there as if sputc() had put one after another; it is only asked where there is
/// no room. Its members are called through pointers, as it is no PutArea that it could be cast to.
class PutArea : private std::streambuf {
 public:
  /// Gives the place of the next byte, or null when there is no room for `bytes` bytes.
  static char* room_for(const std::streambuf& buffer, std::size_t bytes) {
    char* const next = (buffer.*&PutArea::pptr)();
    const auto room = static_cast<std::size_t>((buffer.*&PutArea::epptr)() - next);
    return bytes <= room && bytes <= most_bytes ? next : nullptr;
  }

  /// Gives the place of the first byte, null where the buffer has no memory for what is written.
  static const char* begin(const std::streambuf& buffer) { return (buffer.*&PutArea::pbase)(); }

  /// Ends with `bytes` bytes that were put where room_for() said.
  static void advance(std::streambuf& buffer, std::size_t bytes) {
    (buffer.*&PutArea::pbump)(static_cast<int>(bytes));
  }

 private:
  static constexpr std::size_t most_bytes = std::numeric_limits<int>::max();  // that pbump() takes
};

/// True when text may go straight to the buffer of `out`, which needs neither a check nor a flush.
inline bool is_ready(const std::ostream& out) {
  return (out.flags() & std::ios_base::unitbuf) == 0 && out.tie() == nullptr && out.good();
}

/// Sets the bad bit of `out`, whose buffer has thrown; throws that exception on if `out` is to.
void report_thrown_by_buffer(std::ostream& out);

/// Writes `text` as one unformatted insertion: flags, width, fill and locale of the stream have no
/// part in it. Does what std::ostream::write does, but goes straight to the buffer of a stream that
/// is ready for it.
inline void write_text(std::ostream& out, std::string_view text) {
  const auto size = static_cast<std::streamsize>(text.size());
  if (!is_ready(out)) {
    out.write(text.data(), size);
    return;
  }
  if (char* const place = PutArea::room_for(*out.rdbuf(), text.size()); place != nullptr) {
    copy_text(place, text.data(), text.size());
    PutArea::advance(*out.rdbuf(), text.size());
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
