#ifndef BRUM_UTILS_STRING_STREAM_H
#define BRUM_UTILS_STRING_STREAM_H

#include <cstddef>
#include <ios>
#include <string>
#include <string_view>

#include "brum/utils/export.h"
#include "brum/utils/text_stream.h"

namespace brum {

/// A stream buffer that appends what is written to a string. It is asked for every piece.
class BRUM_EXPORT StringBuffer final : public TextBuffer {
 public:
  std::string_view text() const override { return string; }

  std::string string;

 private:
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
};

/// An output stream into a string that can be taken from it without a copy. For texts of a few long
/// pieces. Throws std::bad_alloc where memory ends, and std::length_error where no string can be
/// longer, instead of setting a bit.
class BRUM_EXPORT StringStream : public TextStream {
 public:
  StringStream() { attach(buffer_); }

  /// Begins a text of about `bytes` bytes, on huge pages where they fit, and makes the error state,
  /// the flags, the width and the precision those of a new stream. Throws std::bad_alloc and
  /// std::length_error; the text is then empty.
  void begin_text(std::size_t bytes);

  /// What was written since begin_text().
  std::string& text() { return buffer_.string; }

 private:
  StringBuffer buffer_;
};

}  // namespace brum

#endif  // BRUM_UTILS_STRING_STREAM_H
