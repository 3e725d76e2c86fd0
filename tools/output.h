#ifndef BRUM_TOOLS_OUTPUT_H
#define BRUM_TOOLS_OUTPUT_H

#include <sys/stat.h>

#include <cstddef>
#include <fstream>
#include <ostream>
#include <string>

#include "brum/utils/memory_stream.h"
#include "destination.h"
#include "io_error.h"

namespace brum::tools {

/// Where a document goes. It arrives whole or not at all: a file is written beside its place and
/// moved there by commit(); what goes to a descriptor, a device or a pipe is held in memory until
/// finish(). Without them nothing remains, also where a signal such as SIGINT ends the process.
class Output {
 public:
  /// Throws IoError where nothing can be written.
  explicit Output(Destination destination);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output();

  /// Where to write.
  std::ostream& stream();

  /// Writes everything out, so that only the name of a file is left to commit(). Gives the size of
  /// the document in bytes. Throws IoError when it cannot be written.
  std::size_t finish();

  /// Gives a finished file its name. Throws IoError when that cannot be done; an old file of that
  /// name is then as it was.
  void commit();

 private:
  void open_device();
  void open_temporary(const struct stat* old);
  void remove_temporary();
  [[noreturn]] void refuse(const std::string& why) const;

  Destination destination_;
  int device_ = -1;        // a descriptor of a device or a pipe that was opened here
  std::string temporary_;  // the file being written, empty when there is none
  std::ofstream file_;
  MemoryStream text_;
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_OUTPUT_H
