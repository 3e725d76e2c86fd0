#ifndef BRUM_PRINTERS_TEXT_STREAM_H
#define BRUM_PRINTERS_TEXT_STREAM_H

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

#include "brum/utils/export.h"

namespace brum {

/// A stream buffer over memory that is used again and again. Grows by doubling.
class BRUM_EXPORT TextBuffer : public std::streambuf {
 public:
  /// What was written since the last clear(); valid until more is written.
  std::string_view text() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }

  /// Drops the text and keeps the memory.
  void clear() { setp(pbase(), epptr()); }

 private:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;

  void make_room(std::size_t bytes);
  void advance(std::size_t bytes);

  std::string memory_;
};

/// An output stream into a TextBuffer. Throws where memory ends instead of setting a bit.
class BRUM_EXPORT TextStream : public std::ostream {
 public:
  TextStream() : std::ostream(nullptr) {
    rdbuf(&buffer_);
    exceptions(std::ios_base::badbit);
  }

  /// What was written since the last clear_text(); valid until more is written.
  std::string_view text() const { return buffer_.text(); }

  /// Drops the text, keeps the memory and clears the error state.
  void clear_text() {
    buffer_.clear();
    if (rdstate() != goodbit) {
      clear();
    }
  }

 private:
  TextBuffer buffer_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TEXT_STREAM_H
