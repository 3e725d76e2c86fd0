#ifndef BRUM_TOOLS_CONVERSION_H
#define BRUM_TOOLS_CONVERSION_H

#include "command_line.h"
#include "progress_bar.h"
#include "terminal.h"

namespace brum::tools {

/// Reads one input and writes its document, as `line` asks for; tells the user on standard error
/// what goes wrong, as it is fit for `terminal`. Gives the status to end with, throws nothing.
ExitStatus convert(const CommandLine& line, const Terminal& terminal, ProgressBar& bar);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_CONVERSION_H
