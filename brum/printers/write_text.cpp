#include "brum/printers/write_text.h"

namespace brum {

void report_thrown_by_buffer(std::ostream& out) {
  try {
    out.setstate(std::ios_base::badbit);
  } catch (const std::ios_base::failure&) {
    // What the buffer has thrown says more.
  }
  if ((out.exceptions() & std::ios_base::badbit) != 0) {
    throw;
  }
}

}  // namespace brum
