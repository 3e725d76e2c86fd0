#include "bench/options.h"

#include <algorithm>

namespace brum::bench {

std::string take_option(int* argc, char** argv, std::string_view name, std::string otherwise) {
  const std::string start = "--" + std::string(name) + "=";
  char** const end = argv + *argc;
  char** const found = std::find_if(argv + 1, end, [&start](const char* argument) {
    return std::string_view(argument).substr(0, start.size()) == start;
  });
  if (found == end) {
    return otherwise;
  }
  std::string text = std::string(*found).substr(start.size());
  std::copy(found + 1, end + 1, found);  // the closing null too
  --*argc;
  return text;
}

std::size_t take_number(int* argc, char** argv, std::string_view name, std::size_t otherwise) {
  const std::string text = take_option(argc, argv, name, "");
  return text.empty() ? otherwise : std::stoul(text);
}

}  // namespace brum::bench
