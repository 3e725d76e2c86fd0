#include "file_stream.h"

namespace brum::python {

namespace {

constexpr std::size_t piece_size = 65536;

bool is_binary(const py::object& file) {
  const py::module_ io = py::module_::import("io");
  return py::isinstance(file, io.attr("RawIOBase")) ||
         py::isinstance(file, io.attr("BufferedIOBase"));
}

}  // namespace

FileBuffer::FileBuffer(const py::object& file)
    : write_(file.attr("write")), binary_(is_binary(file)) {
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

py::str to_text(std::string_view bytes) {
  auto text = py::reinterpret_steal<py::str>(PyUnicode_DecodeUTF8(
      bytes.data(), static_cast<py::ssize_t>(bytes.size()), "surrogateescape"));
  if (!text) {
    throw py::error_already_set();
  }
  return text;
}

}  // namespace brum::python
