#ifndef BRUM_TOOLS_OUTPUT_H
#define BRUM_TOOLS_OUTPUT_H

#include <cstddef>
#include <fstream>
#include <ostream>
#include <string>

#include "brum/utils/exception.h"
#include "brum/utils/memory_stream.h"

namespace brum::tools {

/// Thrown when a file cannot be read or written; what() is one line for the user.
class IoError : public Exception {
 public:
  explicit IoError(const std::string& msg) : Exception(msg) {}
};

/// Where a document goes. It arrives whole or not at all: a file is written beside its place and
/// moved there by commit(); what goes to standard output is held in memory until commit().
/// Without commit() nothing remains, also where a signal such as SIGINT ends the process.
class Output {
 public:
  /// Opens `path`, or standard output when it is empty. Throws IoError.
  explicit Output(std::string path);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output();

  /// Where to write.
  std::ostream& stream();

  /// Completes the document and gives its size in bytes. Throws IoError when it cannot be written;
  /// an old file of that name is then as it was.
  std::size_t commit();

 private:
  bool is_file() const { return !path_.empty(); }
  void remove_temporary();

  std::string path_;
  std::string temporary_;  // the file being written, empty when there is none
  std::ofstream file_;
  MemoryStream text_;
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_OUTPUT_H
