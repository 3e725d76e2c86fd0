#ifndef BRUM_TOOLS_STATISTICS_H
#define BRUM_TOOLS_STATISTICS_H

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string_view>

namespace brum::tools {

/// What --stats tells of a run.
struct Statistics {
  std::size_t assertions = 0;  // of the input that were written, repeated ones too
  std::size_t terms = 0;       // distinct ones that were written
  std::size_t definitions = 0;
  std::size_t bytes = 0;
  double seconds_reading = 0;
  double seconds_printing = 0;

  /// Writes the figures, a line each, and the peak of the process's memory.
  void print(std::ostream& out) const;

  /// Writes the same and the names of input, output (empty for standard output) and form as one
  /// object of JSON on a line of its own.
  void print_json(std::ostream& out, std::string_view input, std::string_view output,
                  std::string_view form) const;
};

/// Measures seconds from its making on.
class Stopwatch {
 public:
  double seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_STATISTICS_H
