#include "arguments.h"

#include <CLI/Error.hpp>
#include <algorithm>
#include <cstddef>

namespace brum::tools {

Arguments take_apart(const CLI::App& app, int argc, const char* const* argv) {
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  Arguments arguments;
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (*word == "--") {
      arguments.inputs.insert(arguments.inputs.end(), word + 1, words.end());
      break;
    }
    if (word->size() < 2 || word->front() != '-') {
      arguments.inputs.push_back(*word);
      continue;
    }
    const bool is_long = (*word)[1] == '-';
    const std::size_t length = is_long ? std::min(word->find('='), word->size()) : 2;
    const std::string name = word->substr(0, length);
    const std::string rest = word->substr(length);
    const CLI::Option* option = app.get_option_no_throw(name);
    if (option == nullptr) {
      throw CLI::ExtrasError({*word});
    }
    if (option->get_items_expected_max() == 0) {
      if (rest == "=") {
        throw CLI::ValidationError(name, "there is no word behind '='");
      }
      arguments.options.push_back(*word);
      continue;
    }
    arguments.options.push_back(name);
    if (!rest.empty()) {
      arguments.options.push_back(rest.front() == '=' ? rest.substr(1) : rest);
    } else if (word + 1 != words.end()) {
      arguments.options.push_back(*++word);
    }
  }
  return arguments;
}

}  // namespace brum::tools
