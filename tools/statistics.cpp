#include "statistics.h"

#include <sys/resource.h>

#include <iomanip>
#include <ostream>

namespace brum::tools {

void Statistics::print(std::ostream& out) const {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  out << std::fixed << std::setprecision(6)  //
      << "assertions: " << assertions << '\n'
      << "distinct terms: " << terms << '\n'
      << "definitions: " << definitions << '\n'
      << "bytes: " << bytes << '\n'
      << "seconds reading: " << seconds_reading << '\n'
      << "seconds printing: " << seconds_printing << '\n'
      << "peak memory KiB: " << usage.ru_maxrss << '\n';
}

}  // namespace brum::tools
