#ifndef BRUM_TESTS_TOOLS_DECLARATIONS_H
#define BRUM_TESTS_TOOLS_DECLARATIONS_H

#include <string>
#include <vector>

namespace brum::testing {

/// The lines of a text, each with its line feed.
std::vector<std::string> lines_of(const std::string& text);

/// Sorts neighbouring declarations: their order is that of a hash table, and may differ from build
/// to build. Declarations of sorts must come before the others, and stay there.
std::string with_sorted_declarations(const std::string& text);

}  // namespace brum::testing

#endif
