#ifndef BRUM_PYTHON_FILE_STREAM_H
#define BRUM_PYTHON_FILE_STREAM_H

#include <ostream>
#include <streambuf>
#include <string>

#include "handles.h"

namespace brum::python {

/// Hands text to the write() of a Python file object, 64 KiB at a time: as bytes for a binary file,
/// else as str, decoded as to_text() does. Files of Python's io that are binary count as such, and
/// others whose `mode` is a str with a `b` in it. What write() raises comes out of the stream as an
/// exception; so does BlockingIOError where a raw file took nothing for now.
class FileBuffer : public std::streambuf {
 public:
  explicit FileBuffer(const py::object& file);

  /// Hands over what is left.
  void finish();

 private:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;

  void send(bool at_end);

  py::object write_;
  bool raw_;  // a None from write() says that nothing was taken
  bool binary_;
  std::string memory_;
};

/// An output stream into a Python file object. finish() must be called at the end.
class FileStream : public std::ostream {
 public:
  explicit FileStream(const py::object& file) : std::ostream(nullptr), buffer_(file) {
    rdbuf(&buffer_);
    exceptions(std::ios_base::badbit);
  }

  void finish() { buffer_.finish(); }

 private:
  FileBuffer buffer_;
};

}  // namespace brum::python

#endif  // BRUM_PYTHON_FILE_STREAM_H
