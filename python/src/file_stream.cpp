#include "file_stream.h"

#include <cerrno>

namespace brum::python {

namespace {

constexpr std::size_t piece_size = 65536;

bool is_raw(const py::object& file) {
  return py::isinstance(file, py::module_::import("io").attr("RawIOBase"));
}

bool is_binary(const py::object& file) {
  const py::module_ io = py::module_::import("io");
  if (is_raw(file) || py::isinstance(file, io.attr("BufferedIOBase"))) {
    return true;
  }
  // The writers of codecs take str, and show the mode of the binary file below them.
  const py::module_ codecs = py::module_::import("codecs");
  if (py::isinstance(file, io.attr("TextIOBase")) ||
      py::isinstance(file, codecs.attr("StreamWriter")) ||
      py::isinstance(file, codecs.attr("StreamReaderWriter"))) {
    return false;
  }
  const py::object mode = py::getattr(file, "mode", py::none());
  return py::isinstance<py::str>(mode) && mode.contains("b");
}

[[noreturn]] void raise_blocked() {
  const py::tuple arguments = py::make_tuple(EAGAIN, "write() of the file took nothing");
  PyErr_SetObject(PyExc_BlockingIOError, arguments.ptr());
  throw py::error_already_set();
}

}  // namespace

FileBuffer::FileBuffer(const py::object& file)
    : write_(file.attr("write")), raw_(is_raw(file)), binary_(is_binary(file)) {
  memory_.reserve(piece_size);
}

void FileBuffer::finish() {
  send(true);
}

FileBuffer::int_type FileBuffer::overflow(int_type byte) {
  if (!traits_type::eq_int_type(byte, traits_type::eof())) {
    const char character = traits_type::to_char_type(byte);
    xsputn(&character, 1);
  }
  return traits_type::not_eof(byte);
}

std::streamsize FileBuffer::xsputn(const char* bytes, std::streamsize count) {
  memory_.append(bytes, static_cast<std::size_t>(count));
  if (memory_.size() >= piece_size) {
    send(false);
  }
  return count;
}

void FileBuffer::send(bool at_end) {
  if (memory_.empty()) {
    return;
  }
  const auto size = static_cast<py::ssize_t>(memory_.size());
  if (binary_) {
    py::bytes piece(memory_);
    memory_.clear();
    // A raw file may take a part only.
    py::ssize_t taken = 0;
    while (taken < size) {
      const py::object rest =
          taken == 0 ? py::object(piece) : py::object(piece[py::slice(taken, size, 1)]);
      const py::object count = write_(rest);
      if (raw_ && count.is_none()) {
        raise_blocked();
      }
      if (!py::isinstance<py::int_>(count)) {
        break;  // a file of somebody's own that does not say
      }
      const auto step = py::cast<py::ssize_t>(count);
      if (step <= 0) {
        PyErr_SetString(PyExc_OSError, "write() of the file took nothing");
        throw py::error_already_set();
      }
      taken += step;
    }
    return;
  }
  // A character may be cut by the end of the piece: its bytes wait for the next one.
  py::ssize_t used = size;
  const auto text = py::reinterpret_steal<py::object>(PyUnicode_DecodeUTF8Stateful(
      memory_.data(), size, "surrogateescape", at_end ? nullptr : &used));
  if (!text) {
    throw py::error_already_set();
  }
  memory_.erase(0, static_cast<std::size_t>(used));
  write_(text);
}

}  // namespace brum::python
