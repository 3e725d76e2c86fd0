#ifndef BRUM_TOOLS_ARGUMENTS_H
#define BRUM_TOOLS_ARGUMENTS_H

#include <CLI/App.hpp>
#include <string>
#include <vector>

namespace brum::tools {

/// The words of a command line behind the command's name.
struct Arguments {
  std::vector<std::string> options;  // in their order, each value a word of its own
  std::vector<std::string> inputs;   // as they are given
};

/// Takes the words apart by the options that `app` has. The value of an option may stand behind
/// `=`, in `-o=FILE` as in `--output=FILE`, and may be empty there; the parser by itself takes the
/// next word for an empty value. It also takes an input `[a,b]` for two and drops one named `++`,
/// which is why it is given no inputs. Behind `--` every word is an input.
///
/// Throws CLI::ParseError for an option that there is not.
Arguments take_apart(const CLI::App& app, int argc, const char* const* argv);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_ARGUMENTS_H
