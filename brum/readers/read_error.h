#ifndef BRUM_READERS_READ_ERROR_H
#define BRUM_READERS_READ_ERROR_H

#include <cstddef>
#include <string>

#include "brum/utils/exception.h"
#include "brum/utils/export.h"

namespace brum {

/// A place in a text. Lines count from 1 and end with a line feed; columns count bytes from 1.
struct TextPosition {
  std::size_t line = 1;
  std::size_t column = 1;

  bool operator==(const TextPosition&) const = default;
};

/// Thrown by the readers for a text that is wrong or that a term store cannot hold.
///
/// what() is `FILE:LINE:COLUMN: error: found …, expected …`, so that editors can jump to the place.
class BRUM_EXPORT ReadError : public Exception {
 public:
  ReadError(const std::string& file, TextPosition position, const std::string& message);

  const std::string& file() const { return file_; }
  TextPosition position() const { return position_; }

  /// The text after `error: `.
  const std::string& message() const { return message_; }

 private:
  std::string file_;
  TextPosition position_;
  std::string message_;
};

}  // namespace brum

#endif  // BRUM_READERS_READ_ERROR_H
