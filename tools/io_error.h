#ifndef BRUM_TOOLS_IO_ERROR_H
#define BRUM_TOOLS_IO_ERROR_H

#include <string>

#include "brum/utils/exception.h"

namespace brum::tools {

/// Thrown when a file cannot be read or written; what() is one line for the user.
class IoError : public Exception {
 public:
  explicit IoError(const std::string& msg) : Exception(msg) {}
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_IO_ERROR_H
