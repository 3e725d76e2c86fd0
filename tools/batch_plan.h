#ifndef BRUM_TOOLS_BATCH_PLAN_H
#define BRUM_TOOLS_BATCH_PLAN_H

#include <string>
#include <vector>

#include "brum/utils/exception.h"
#include "command_line.h"

namespace brum::tools {

/// Thrown for inputs that do not go together; what() is one line for the user.
class BadBatch : public Exception {
 public:
  explicit BadBatch(const std::string& msg) : Exception(msg) {}
};

/// Gives the command line of each input of a batch, which names one input and the file of the
/// output folder to write.
///
/// A folder stands for the .smt2 and .smt files below it, sorted by their paths; the output folder
/// itself is left out, and links to folders are not followed. The output for a file of a folder has
/// the file's path in that folder, the one for any other file its name; its extension is that of
/// the form: .smt for version 1.2, .dot for drawings, else .smt2.
///
/// Throws BadBatch when there is no input at all, when two inputs would be written to one file, and
/// when an output would replace an input; IoError for a folder that cannot be read.
std::vector<CommandLine> plan_batch(const CommandLine& line);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_BATCH_PLAN_H
