#ifndef BRUM_UTILS_TEXT_STREAM_H
#define BRUM_UTILS_TEXT_STREAM_H

#include <ios>
#include <ostream>
#include <streambuf>
#include <string_view>

#include "brum/utils/export.h"

namespace brum {

/// A stream buffer that keeps what is written in memory. It tells where it stands and cannot be
/// made to stand elsewhere.
class BRUM_EXPORT TextBuffer : public std::streambuf {
 public:
  /// What was written since it was last cleared; valid until more is written.
  virtual std::string_view text() const = 0;

 protected:
  int_type overflow(int_type byte) override;
  pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                   std::ios_base::openmode which) override;
};

/// An output stream into a TextBuffer. Throws what that throws instead of setting a bit.
class BRUM_EXPORT TextStream : public std::ostream {
 protected:
  TextStream() : std::ostream(nullptr) {}

  /// Makes the stream write to `buffer`, which must outlive what is written.
  void attach(TextBuffer& buffer) {
    rdbuf(&buffer);
    exceptions(std::ios_base::badbit);
  }

  /// Makes the error state, the flags, the width and the precision those of a new stream.
  void reset_state() {
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
};

}  // namespace brum

#endif  // BRUM_UTILS_TEXT_STREAM_H
