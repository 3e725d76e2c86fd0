#include "statistics.h"

#include <sys/resource.h>

#include <iomanip>
#include <ostream>

#include "json_text.h"

namespace brum::tools {

namespace {

/// The peak of the process's memory so far.
long peak_memory_kib() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace

void Statistics::print(std::ostream& out) const {
  out << std::fixed << std::setprecision(6)  //
      << "assertions: " << assertions << '\n'
      << "distinct terms: " << terms << '\n'
      << "definitions: " << definitions << '\n'
      << "bytes: " << bytes << '\n'
      << "seconds reading: " << seconds_reading << '\n'
      << "seconds printing: " << seconds_printing << '\n'
      << "peak memory KiB: " << peak_memory_kib() << '\n';
}

void Statistics::print_json(std::ostream& out, std::string_view input, std::string_view output,
                            std::string_view form) const {
  out << std::fixed << std::setprecision(6)  //
      << "{\"input\": " << json_string(input)
      << ", \"output\": " << (output.empty() ? "null" : json_string(output))
      << ", \"form\": " << json_string(form) << ", \"assertions\": " << assertions
      << ", \"distinct_terms\": " << terms << ", \"definitions\": " << definitions
      << ", \"bytes\": " << bytes << ", \"seconds_reading\": " << seconds_reading
      << ", \"seconds_printing\": " << seconds_printing
      << ", \"peak_memory_kib\": " << peak_memory_kib() << "}\n";
}

}  // namespace brum::tools
