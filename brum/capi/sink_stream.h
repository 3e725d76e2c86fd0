#ifndef BRUM_CAPI_SINK_STREAM_H
#define BRUM_CAPI_SINK_STREAM_H

// A C++ stream into a sink of the C interface. Not part of the interface.

#include <array>
#include <ostream>
#include <streambuf>

#include "brum/capi/handles.h"
#include "brum/capi/printing.h"

namespace brum::capi {

/// Collects some kilobytes before it calls the sink. Throws SinkFailure when that takes no more;
/// what is written afterwards is dropped.
class SinkBuffer : public std::streambuf {
 public:
  /// Throws NullArgument when the sink has no function.
  explicit SinkBuffer(brum_sink sink);

  /// Hands what was collected to the sink. Throws as above.
  void flush();

  /// Drops the last byte written when it is a line feed. It is always there still: the buffer is
  /// flushed only when more is written.
  void drop_line_end();

 private:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;

  void send(const char* bytes, std::size_t count) const;

  brum_sink sink_;
  std::array<char, 8192> memory_;
};

/// An output stream into a sink; lets what the buffer throws pass. finish() must be called at the
/// end, as the destructor writes nothing.
class SinkStream : public std::ostream {
 public:
  explicit SinkStream(brum_sink sink) : std::ostream(nullptr), buffer_(sink) {
    rdbuf(&buffer_);
    exceptions(std::ios_base::badbit);
  }

  void finish() { buffer_.flush(); }

  /// The same, leaving out a line feed at the very end.
  void finish_without_line_end() {
    buffer_.drop_line_end();
    buffer_.flush();
  }

 private:
  SinkBuffer buffer_;
};

}  // namespace brum::capi

#endif  // BRUM_CAPI_SINK_STREAM_H
