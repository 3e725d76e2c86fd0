#include "brum/readers/read_error.h"

namespace brum {

namespace {

std::string full_text(const std::string& file, TextPosition position, const std::string& message) {
  return file + ':' + std::to_string(position.line) + ':' + std::to_string(position.column) +
         ": error: " + message;
}

}  // namespace

ReadError::ReadError(const std::string& file, TextPosition position, const std::string& message)
    : Exception(full_text(file, position, message)),
      file_(file),
      position_(position),
      message_(message) {}

}  // namespace brum
