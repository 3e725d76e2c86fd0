#include "tests/tools/declarations.h"

#include <algorithm>
#include <sstream>

namespace brum::testing {

namespace {

/// Whether a line declares a symbol or a sort, or is a constant of a drawing.
bool declares(const std::string& line) {
  return line.starts_with("(declare-") || line.starts_with(":extra") ||
         line.ends_with(" shape=box];\n");
}

bool declares_sort(const std::string& line) {
  return line.starts_with("(declare-sort ") || line.starts_with(":extrasorts ");
}

}  // namespace

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line + (in.eof() ? "" : "\n"));
  }
  return lines;
}

std::string with_sorted_declarations(const std::string& text) {
  std::vector<std::string> lines = lines_of(text);
  for (auto first = lines.begin(); first != lines.end();) {
    const auto same_kind = [&](const std::string& line) {
      return declares(line) && declares_sort(line) == declares_sort(*first);
    };
    const auto last = std::find_if_not(first, lines.end(), same_kind);
    std::sort(first, last);
    first = last == first ? first + 1 : last;
  }
  std::string sorted;
  for (const std::string& line : lines) {
    sorted += line;
  }
  return sorted;
}

}  // namespace brum::testing
