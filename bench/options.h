#ifndef BRUM_BENCH_OPTIONS_H
#define BRUM_BENCH_OPTIONS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace brum::bench {

/// Takes `--NAME=TEXT` out of the arguments, so that Google Benchmark does not see it, and gives
/// the text; gives `otherwise` when it is not there.
std::string take_option(int* argc, char** argv, std::string_view name, std::string otherwise);

/// The same for a number.
std::size_t take_number(int* argc, char** argv, std::string_view name, std::size_t otherwise);

}  // namespace brum::bench

#endif  // BRUM_BENCH_OPTIONS_H
