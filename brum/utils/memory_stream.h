#ifndef BRUM_UTILS_MEMORY_STREAM_H
#define BRUM_UTILS_MEMORY_STREAM_H

#include <cstddef>
#include <ios>
#include <string_view>

#include "brum/utils/export.h"
#include "brum/utils/large_memory.h"
#include "brum/utils/text_stream.h"

namespace brum {

/// A stream buffer that keeps what is written in one block of memory, which grows without copying
/// once it is large.
class BRUM_EXPORT MemoryBuffer final : public TextBuffer {
 public:
  std::string_view text() const override {
    return {begin(), static_cast<std::size_t>(pptr() - begin())};
  }

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
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;

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
class BRUM_EXPORT MemoryStream : public TextStream {
 public:
  MemoryStream() { attach(buffer_); }

  /// What was written since it was last cleared; valid until more is written or room is made.
  std::string_view text() const { return buffer_.text(); }

  /// Makes room for `bytes` more bytes. Throws std::bad_alloc and then changes nothing.
  void reserve(std::size_t bytes) { buffer_.reserve(bytes); }

  /// Drops the text, keeps the memory, and makes the error state, the flags, the width and the
  /// precision those of a new stream.
  void clear_text() {
    buffer_.clear();
    reset_state();
  }

 private:
  MemoryBuffer buffer_;
};

}  // namespace brum

#endif  // BRUM_UTILS_MEMORY_STREAM_H
