#ifndef BRUM_TOOLS_NUMBER_MEMORY_H
#define BRUM_TOOLS_NUMBER_MEMORY_H

namespace brum::tools {

/// Makes the process end in order where there is no memory for the digits of a number: doomed files
/// (doomed_files.h) are removed, one line tells the user, and the exit status is that of other
/// memory that ended. GMP would otherwise end it by a signal; it cannot be made to throw.
void end_in_order_without_memory_for_numbers();

}  // namespace brum::tools

#endif  // BRUM_TOOLS_NUMBER_MEMORY_H
