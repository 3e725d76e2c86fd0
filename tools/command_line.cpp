#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>

#include "arguments.h"
#include "brum/printers/smtlib_identifiers.h"
#include "message_text.h"
#include "output.h"

namespace brum::tools {

namespace {

constexpr std::array<std::pair<std::string_view, Form>, 6> forms = {{
    {"v1", Form::v1},
    {"v2", Form::v2},
    {"define-fun", Form::define_fun},
    {"terms", Form::terms},
    {"trace", Form::trace},
    {"dot", Form::dot},
}};

// Each check gives what is wrong with a word, empty if nothing is.

/// Checks that a word needs no bars as a symbol of SMT-LIB 2.6, so that a prefix makes labels that
/// need none.
std::string check_plain_symbol(const std::string& word) {
  const bool plain = !word.empty() && is_simple_symbol(word);
  return plain ? "" : "'" + word + "' is not a plain SMT-LIB 2 symbol";
}

/// Checks the name of a logic; an empty one leaves its line out.
std::string check_logic(const std::string& word) {
  return word.empty() ? "" : check_plain_symbol(word);
}

/// Checks a status; an empty one leaves its line out.
std::string check_status(const std::string& word) {
  return word.empty() || is_status(word) ? "" : "'" + word + "' is none of sat|unsat|unknown";
}

/// Checks that a word is a number from 1 on, in plain decimal, that can be held.
std::string check_ordinal(const std::string& word) {
  constexpr std::string_view digits = "0123456789";
  const bool is_ordinal =
      !word.empty() && word.front() != '0' && word.find_first_not_of(digits) == std::string::npos;
  if (!is_ordinal) {
    return "'" + word + "' is not a number from 1 on";
  }
  std::size_t number = 0;
  const auto result = std::from_chars(word.data(), word.data() + word.size(), number);
  return result.ec == std::errc() ? "" : "'" + word + "' is too large";
}

/// Checks that a word can be a path.
std::string check_path(const std::string& word) {
  return word.empty() ? "the name is empty" : "";
}

const std::map<std::string, StatsFormat> stats_formats = {
    {"true", StatsFormat::text},  // what a flag without a word says
    {"text", StatsFormat::text},
    {"json", StatsFormat::json}};

/// INPUT is here for --help: the words for inputs are not left to the parser. `stats` is the word
/// for the format of the statistics, empty where they are not wanted.
void add_options(CLI::App& app, CommandLine& line, std::string& stats) {
  static const std::map<std::string, Form> form_of_word(forms.begin(), forms.end());
  static const std::map<std::string, Language> languages = {{"v1", Language::v1},
                                                            {"v2", Language::v2}};
  const auto one_of = [](const auto& names, const char* kinds) {
    return CLI::Validator(
        [&names, kinds](const std::string& word) {
          return names.count(word) != 0 ? std::string()
                                        : "'" + word + "' is none of " + std::string(kinds);
        },
        "");
  };
  app.add_option("INPUT", line.inputs,
                 "SMT-LIB file to read; none or - is standard input. With --output-folder several, "
                 "and\nfolders, which stand for the .smt2 and .smt files below them")
      ->option_text("...");
  app.add_option_function<std::string>(
         "-t,--to", [&line](const std::string& word) { line.form = form_of_word.at(word); },
         "Form to write: a benchmark of version 1.2, a script with let (v2, the default) or with\n"
         "define-fun, a script that names each assertion (terms), or the input's assertions, "
         "push,\n"
         "pop and check-sat in their order (trace); or a drawing of the graph for Graphviz (dot)")
      ->check(one_of(form_of_word, "v1|v2|define-fun|terms|trace|dot"))
      ->option_text("v1|v2|define-fun|terms|trace|dot");
  app.add_option("-o,--output", line.output,
                 "File to write, whole or not at all; standard output when not given")
      ->check(CLI::Validator(check_path, ""))
      ->option_text("FILE");
  app.add_option(
         "--output-folder", line.output_folder,
         "Folder to write a file for each input into, of the input's name; made where it is "
         "missing")
      ->check(CLI::Validator(check_path, ""))
      ->option_text("DIR");
  app.add_option("-j,--jobs", line.jobs,
                 "Number of processes that share the inputs; 1 when not given")
      ->check(CLI::Validator(check_ordinal, ""))
      ->option_text("N");
  app.add_option("--logic", line.logic, "Logic to state instead of the input's")
      ->check(CLI::Validator(check_logic, ""))
      ->option_text("NAME");
  app.add_option("--status", line.status, "Status to state instead of the input's")
      ->check(CLI::Validator(check_status, ""))
      ->option_text("sat|unsat|unknown");
  app.add_option_function<std::string>(
         "--from", [&line](const std::string& word) { line.language = languages.at(word); },
         "Language of the input; found by its first token when not given")
      ->check(one_of(languages, "v1|v2"))
      ->option_text("v1|v2");
  app.add_option("--label", line.label,
                 "Prefix of the labels of shared subterms instead of .def_ (version 2 forms)")
      ->check(CLI::Validator(check_plain_symbol, ""))
      ->option_text("PREFIX");
  app.add_option("--query", line.query,
                 "Write what is in force at the N-th check-sat; the first when not given")
      ->check(CLI::Validator(check_ordinal, ""))
      ->option_text("N");
  app.add_option("--introduced", line.introduced,
                 "File for SMT-LIB 2 definitions of the symbols that reading made up, for division "
                 "by what\nis no number and the like")
      ->check(CLI::Validator(check_path, ""))
      ->option_text("FILE");
  app.add_option("--nodes", line.most_nodes,
                 "Draw the N terms nearest to the formula (dot); 1000 when not given")
      ->check(CLI::Validator(check_ordinal, ""))
      ->option_text("N");
  app.add_flag("--stats", stats,
               "Print sizes, times and memory on standard error; with --stats=json as JSON")
      ->check(one_of(stats_formats, "text|json"))
      ->option_text("[=text|json]");
  app.set_version_flag("--version", "brumlin " BRUM_VERSION);
}

/// Throws for options that do not go together.
void check_combinations(const CommandLine& line) {
  if (line.form == Form::v1 && line.label) {
    throw CLI::ValidationError("--label", "labels have fixed forms in version 1.2");
  }
  if (line.form == Form::dot && line.label) {
    throw CLI::ValidationError("--label", "a drawing has the usual labels");
  }
  if ((line.form == Form::terms || line.form == Form::trace) && line.query) {
    throw CLI::ValidationError("--query", "this form writes every assertion of the input");
  }
  if (!line.is_batch()) {
    if (line.inputs.size() > 1) {
      throw CLI::ValidationError("INPUT", "several inputs need --output-folder");
    }
    return;
  }
  if (!line.output.empty()) {
    throw CLI::ValidationError("--output", "the outputs go to the folder");
  }
  if (!line.introduced.empty()) {
    throw CLI::ValidationError("--introduced", "one file cannot serve several inputs");
  }
  if (line.inputs.empty() || std::count(line.inputs.begin(), line.inputs.end(), "-") != 0) {
    throw CLI::ValidationError("--output-folder", "standard input has no name to write under");
  }
}

/// Prints what --help or --version gives.
ExitStatus answer(const CLI::App& app, const CLI::ParseError& wish) {
  try {
    Output output(Destination(""));
    app.exit(wish, output.stream(), output.stream());
    output.finish();
    return ExitStatus::done;
  } catch (const IoError& problem) {
    std::cerr << "brumlin: error: " << problem.what() << '\n';
    return ExitStatus::io_error;
  }
}

}  // namespace

std::string_view word_of(Form form) {
  return std::find_if(forms.begin(), forms.end(),
                      [form](const auto& entry) { return entry.second == form; })
      ->first;
}

bool is_status(std::string_view word) {
  return word == "sat" || word == "unsat" || word == "unknown";
}

std::optional<CommandLine> parse_command_line(int argc, const char* const* argv,
                                              ExitStatus& status) {
  CommandLine line;
  CLI::App app("Reads an SMT-LIB file and writes it in another form, with shared subterms named.",
               "brumlin");
  std::string stats;
  add_options(app, line, stats);
  try {
    Arguments arguments = take_apart(app, argc, argv);
    app.parse(std::vector<std::string>(arguments.options.rbegin(), arguments.options.rend()));
    line.inputs = std::move(arguments.inputs);
    check_combinations(line);
    line.stats = stats.empty() ? StatsFormat::none : stats_formats.at(stats);
    if (!line.is_batch() && !line.inputs.empty()) {
      line.input = line.inputs.front();
    }
  } catch (const CLI::ParseError& outcome) {
    const bool asked_for = outcome.get_exit_code() == 0;
    if (!asked_for) {
      std::cerr << "brumlin: error: " << short_message_text(outcome.what()) << '\n';
      status = ExitStatus::bad_input;
      return std::nullopt;
    }
    status = answer(app, outcome);
    return std::nullopt;
  }
  return line;
}

}  // namespace brum::tools
