#ifndef BRUM_UTILS_MEMORY_STREAM_H
#define BRUM_UTILS_MEMORY_STREAM_H

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string_view>

#include "brum/utils/export.h"
#include "brum/utils/large_memory.h"

namespace brum {

/// A stream buffer that keeps what is written in one block of memory, which grows without copying
/// once it is large. It tells where it stands and cannot be made to stand elsewhere.
class BRUM_EXPORT MemoryBuffer : public std::streambuf {
 public:
  /// What was written since it was last cleared; valid until more is written or room is made.
  std::string_view text() const { return {begin(), static_cast<std::size_t>(pptr() - begin())}; }

  /// Drops the text and keeps the memory.
  void clear() { setp(begin(), epptr()); }

  /// Makes room for `bytes` more bytes, so that they can be put without the buffer being asked.
  /// Throws std::bad_alloc and then changes nothing.
  void reserve(std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(epptr() - pptr())) {
      make_room(bytes);
    }
  }

 private:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
  pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                   std::ios_base::openmode which) override;

  char* begin() const { return reinterpret_cast<char*>(memory_.begin()); }
  void make_room(std::size_t bytes);

  LargeBlock memory_;  // the text, then the put area
};

/// An output stream into memory: what std::ostringstream is, and faster for long texts. Throws
/// std::bad_alloc where memory ends instead of setting a bit.
///
///     MemoryStream out;
///     printer.print_formula(out, formula);
///     use(out.text());
class BRUM_EXPORT MemoryStream : public std::ostream {
 public:
  MemoryStream() : std::ostream(nullptr) {
    rdbuf(&buffer_);
    exceptions(std::ios_base::badbit);
  }

  /// What was written since it was last cleared; valid until more is written or room is made.
  std::string_view text() const { return buffer_.text(); }

  /// Makes room for `bytes` more bytes. Throws std::bad_alloc and then changes nothing.
  void reserve(std::size_t bytes) { buffer_.reserve(bytes); }

  /// Drops the text, keeps the memory, and makes the error state, the flags, the width and the
  /// precision those of a new stream.
  void clear_text() {
    buffer_.clear();
    if (rdstate() != goodbit) {
      clear();
    }
    if (flags() != new_flags || precision() != new_precision || width() != 0) {
      flags(new_flags);
      precision(new_precision);
      width(0);
    }
  }

 private:
  static constexpr fmtflags new_flags = skipws | dec;
  static constexpr std::streamsize new_precision = 6;

  MemoryBuffer buffer_;
};

}  // namespace brum

#endif  // BRUM_UTILS_MEMORY_STREAM_H
