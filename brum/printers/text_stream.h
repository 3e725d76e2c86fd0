#ifndef BRUM_PRINTERS_TEXT_STREAM_H
#define BRUM_PRINTERS_TEXT_STREAM_H

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>

#include "brum/utils/export.h"

namespace brum {

/// A stream buffer that appends to a string.
class BRUM_EXPORT TextBuffer : public std::streambuf {
 public:
  /// What was written since the last clear(); valid until more is written.
  std::string_view text() const { return text_; }

  /// Drops the text and keeps the memory.
  void clear() { text_.clear(); }

  /// Gives the text with its memory, and has neither afterwards.
  std::string take() { return std::exchange(text_, std::string()); }

  /// Drops the text, and writes into the memory of `old` from now on.
  void use_memory_of(std::string&& old) {
    text_ = std::move(old);
    text_.clear();
  }

  std::size_t capacity() const { return text_.capacity(); }

 private:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;

  std::string text_;
};

/// An output stream for short texts that end up as strings, one after another: the string is given
/// away with its memory. Whole documents go to a MemoryStream. Throws where memory ends instead of
/// setting a bit.
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

  /// Gives the text as a string of about its length. Memory that is much larger stays here.
  std::string take_text();

  /// Drops the text. Writes into the memory of `old` from now on if that is more than there is.
  void use_memory_of(std::string&& old) {
    if (old.capacity() > buffer_.capacity()) {
      buffer_.use_memory_of(std::move(old));
    }
  }

 private:
  TextBuffer buffer_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TEXT_STREAM_H
