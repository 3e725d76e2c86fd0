#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>
#include <string_view>

namespace brum::tools {

namespace {

/// Checks that a prefix makes labels that need no bars in SMT-LIB 2.6; gives what is wrong.
std::string check_label_prefix(const std::string& prefix) {
  constexpr std::string_view letters_and_digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
  constexpr std::string_view digits = "0123456789";
  constexpr std::string_view punctuation = "~!@$%^&*_-+=<>.?/";
  const bool simple = std::all_of(prefix.begin(), prefix.end(), [&](char byte) {
    return letters_and_digits.find(byte) != std::string_view::npos ||
           punctuation.find(byte) != std::string_view::npos;
  });
  if (prefix.empty() || !simple || digits.find(prefix.front()) != std::string_view::npos) {
    return "'" + prefix + "' is not a plain SMT-LIB 2 symbol";
  }
  // A sign or a dot before digits is a symbol in SMT-LIB, but some solvers read a number.
  return "";
}

void add_options(CLI::App& app, CommandLine& line) {
  static const std::map<std::string, Form> forms = {
      {"v1", Form::v1},       {"v2", Form::v2},       {"define-fun", Form::define_fun},
      {"terms", Form::terms}, {"trace", Form::trace},
  };
  static const std::map<std::string, Language> languages = {{"v1", Language::v1},
                                                            {"v2", Language::v2}};
  const auto one_of = [](const auto& names, const char* kinds) {
    return CLI::Validator(
        [&names, kinds](const std::string& word) {
          return names.count(word) != 0 ? std::string()
                                        : "'" + word + "' is none of " + std::string(kinds);
        },
        kinds);
  };
  app.add_option("INPUT", line.input, "SMT-LIB file to read; none or - is standard input");
  app.add_option_function<std::string>(
         "-t,--to", [&line](const std::string& word) { line.form = forms.at(word); },
         "Form to write: a benchmark of version 1.2, a script with let (v2, the default) or with\n"
         "define-fun, a script that names each assertion (terms), or the input's assertions, "
         "push,\n"
         "pop and check-sat in their order (trace)")
      ->check(one_of(forms, "v1|v2|define-fun|terms|trace"));
  app.add_option("-o,--output", line.output,
                 "File to write, whole or not at all; standard output when not given");
  app.add_option("--logic", line.logic, "Logic to state instead of the input's");
  app.add_option("--status", line.status, "Status to state instead of the input's");
  app.add_option_function<std::string>(
         "--from", [&line](const std::string& word) { line.language = languages.at(word); },
         "Language of the input; found by its first token when not given")
      ->check(one_of(languages, "v1|v2"));
  app.add_option("--label", line.label,
                 "Prefix of the labels of shared subterms instead of .def_ (version 2 forms)")
      ->check(CLI::Validator(check_label_prefix, "PREFIX"));
  app.add_option("--query", line.query,
                 "Write what is in force at the N-th check-sat; the first when not given")
      ->check(CLI::PositiveNumber);
  app.add_option("--introduced", line.introduced,
                 "File for SMT-LIB 2 definitions of the symbols that reading made up, for division "
                 "by what\nis no number and the like");
  app.add_flag("--stats", line.stats, "Print sizes, times and memory on standard error");
  app.set_version_flag("--version", "brumlin " BRUM_VERSION);
}

}  // namespace

std::optional<CommandLine> parse_command_line(int argc, const char* const* argv,
                                              ExitStatus& status) {
  CommandLine line;
  CLI::App app("Reads an SMT-LIB file and writes it in another form, with shared subterms named.",
               "brumlin");
  add_options(app, line);
  try {
    app.parse(argc, argv);
    if (line.form == Form::v1 && line.label) {
      throw CLI::ValidationError("--label", "labels have fixed forms in version 1.2");
    }
  } catch (const CLI::ParseError& outcome) {
    const bool asked_for = outcome.get_exit_code() == 0;
    if (asked_for) {
      app.exit(outcome);
    } else {
      std::cerr << "brumlin: error: " << outcome.what() << '\n';
    }
    status = asked_for ? ExitStatus::done : ExitStatus::bad_input;
    return std::nullopt;
  }
  return line;
}

}  // namespace brum::tools
