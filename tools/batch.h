#ifndef BRUM_TOOLS_BATCH_H
#define BRUM_TOOLS_BATCH_H

#include "command_line.h"
#include "terminal.h"

namespace brum::tools {

/// Converts each input of a batch in a process of its own, `line.jobs` at a time. An input that
/// goes wrong does not stop the others; messages come in the order of the inputs, whichever is done
/// first. Gives the status to end with, the highest of all inputs'; throws nothing.
ExitStatus run_batch(const CommandLine& line, const Terminal& terminal);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_BATCH_H
