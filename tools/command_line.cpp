#include "command_line.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <iostream>
#include <map>
#include <string_view>
#include <system_error>

#include "brum/printers/smtlib_identifiers.h"

namespace brum::tools {

namespace {

// Each check gives what is wrong with a word, empty if nothing is.

/// Checks that a word needs no bars as a symbol of SMT-LIB 2.6, so that a prefix makes labels that
/// need none.
std::string check_plain_symbol(const std::string& word) {
  const bool plain = !word.empty() && is_simple_symbol(word);
  return plain ? "" : "'" + word + "' is not a plain SMT-LIB 2 symbol";
}

/// Checks a word that is written into the header; an empty one leaves its line out.
std::string check_header_word(const std::string& word) {
  return word.empty() ? "" : check_plain_symbol(word);
}

/// Checks that a word is a number from 1 on, in plain decimal.
std::string check_ordinal(const std::string& word) {
  constexpr std::string_view digits = "0123456789";
  const bool is_ordinal =
      !word.empty() && word.front() != '0' && word.find_first_not_of(digits) == std::string::npos;
  return is_ordinal ? "" : "'" + word + "' is not a number from 1 on";
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
  app.add_option("--logic", line.logic, "Logic to state instead of the input's")
      ->check(CLI::Validator(check_header_word, "NAME"));
  app.add_option("--status", line.status, "Status to state instead of the input's")
      ->check(CLI::Validator(check_header_word, "WORD"));
  app.add_option_function<std::string>(
         "--from", [&line](const std::string& word) { line.language = languages.at(word); },
         "Language of the input; found by its first token when not given")
      ->check(one_of(languages, "v1|v2"));
  app.add_option("--label", line.label,
                 "Prefix of the labels of shared subterms instead of .def_ (version 2 forms)")
      ->check(CLI::Validator(check_plain_symbol, "PREFIX"));
  app.add_option("--query", line.query,
                 "Write what is in force at the N-th check-sat; the first when not given")
      ->check(CLI::Validator(check_ordinal, "N"));
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
    if ((line.form == Form::terms || line.form == Form::trace) && line.query) {
      throw CLI::ValidationError("--query", "this form writes every assertion of the input");
    }
  } catch (const CLI::ParseError& outcome) {
    const bool asked_for = outcome.get_exit_code() == 0;
    if (!asked_for) {
      std::cerr << "brumlin: error: " << outcome.what() << '\n';
      status = ExitStatus::bad_input;
      return std::nullopt;
    }
    app.exit(outcome);
    errno = 0;
    std::cout.flush();
    status = std::cout ? ExitStatus::done : ExitStatus::io_error;
    if (status != ExitStatus::done) {
      std::cerr << "brumlin: error: cannot write standard output: "
                << std::generic_category().message(errno) << '\n';
    }
    return std::nullopt;
  }
  return line;
}

}  // namespace brum::tools
