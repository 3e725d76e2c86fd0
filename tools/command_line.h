#ifndef BRUM_TOOLS_COMMAND_LINE_H
#define BRUM_TOOLS_COMMAND_LINE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brum::tools {

/// The exit statuses of the command.
enum class ExitStatus : std::uint8_t {
  done = 0,
  cannot_express = 1,  // the asked form has no text for the input
  bad_input = 2,       // or bad usage
  io_error = 3,
};

/// The forms that the command writes.
enum class Form : std::uint8_t { v1, v2, define_fun, terms, trace, dot };

/// The word for a form on the command line.
std::string_view word_of(Form form);

/// Whether a word is a status that documents state.
bool is_status(std::string_view word);

/// The languages that the command reads.
enum class Language : std::uint8_t { v1, v2 };

/// How the user wants the statistics of a run.
enum class StatsFormat : std::uint8_t { none, text, json };

/// What the user asked for. With an output folder it is asked for each of `inputs`; the command
/// line of one of them says so in `input` and `output`.
struct CommandLine {
  std::vector<std::string> inputs;  // paths as given; none stands for standard input
  std::string output_folder;        // a path, empty for none
  std::size_t jobs = 1;             // the number of processes that share the inputs

  std::string input = "-";  // a path, or - for standard input
  std::string output;       // a path, empty for standard output
  Form form = Form::v2;
  std::optional<Language> language;   // found by the input's first token when not given
  std::optional<std::string> logic;   // instead of the input's
  std::optional<std::string> status;  // instead of the input's
  std::optional<std::string> label;   // prefix of labels instead of `.def_`
  std::optional<std::size_t> query;   // the check-sat to write, counted from 1
  std::string introduced;             // a path for what made-up symbols mean, empty for nowhere
  std::size_t most_nodes = 1000;      // of a drawing
  StatsFormat stats = StatsFormat::none;

  /// The input's name in messages.
  std::string input_name() const { return input == "-" ? "<stdin>" : input; }

  /// Whether each input has a file of the output folder.
  bool is_batch() const { return !output_folder.empty(); }
};

/// Takes the arguments of the process apart. Gives nothing, after telling the user why, when the
/// process is to end with `status`: after --help, --version or an error of usage.
std::optional<CommandLine> parse_command_line(int argc, const char* const* argv,
                                              ExitStatus& status);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_COMMAND_LINE_H
