#include <csignal>
#include <exception>
#include <iostream>
#include <new>

#include "brum/printers/term_printer.h"
#include "brum/readers/read_error.h"
#include "brum/readers/script.h"
#include "command_line.h"
#include "documents.h"
#include "input.h"
#include "introduced.h"
#include "output.h"
#include "statistics.h"
#include "warnings.h"

namespace {

using brum::tools::CommandLine;
using brum::tools::ExitStatus;

void convert(const CommandLine& line) {
  brum::tools::Output output(line.output);
  brum::tools::Statistics statistics;
  brum::tools::Warnings warnings(line.input_name(), std::cerr);
  brum::TermManager manager;
  brum::Script script;
  const brum::tools::Stopwatch reading;
  brum::tools::read_input(line, manager, script);
  statistics.seconds_reading = reading.seconds();
  const brum::tools::Stopwatch printing;
  const brum::tools::DocumentSource source{line, script, manager, warnings, statistics};
  brum::tools::write_document(source, output.stream());
  if (!line.introduced.empty()) {
    brum::tools::Output definitions(line.introduced);
    brum::tools::write_introduced(source, definitions.stream());
    definitions.commit();
  }
  statistics.bytes = output.commit();
  statistics.seconds_printing = printing.seconds();
  if (line.stats) {
    statistics.print(std::cerr);
  }
}

/// Tells the user what went wrong in one line; gives the status to end with.
ExitStatus report(const CommandLine& line, const std::exception& problem, ExitStatus status) {
  std::cerr << line.input_name() << ": error: " << problem.what() << '\n';
  return status;
}

ExitStatus run(const CommandLine& line) {
  try {
    convert(line);
    return ExitStatus::done;
  } catch (const brum::ReadError& problem) {
    std::cerr << problem.what() << '\n';  // begins with its place in the file
    return ExitStatus::bad_input;
  } catch (const brum::tools::NoSuchQuery& problem) {
    return report(line, problem, ExitStatus::bad_input);
  } catch (const brum::tools::CannotExpress& problem) {
    return report(line, problem, ExitStatus::cannot_express);
  } catch (const brum::TermPrinter::error& problem) {
    return report(line, problem, ExitStatus::cannot_express);
  } catch (const std::bad_alloc&) {
    std::cerr << "brumlin: error: out of memory\n";
    return ExitStatus::io_error;
  } catch (const std::exception& problem) {
    std::cerr << "brumlin: error: " << problem.what() << '\n';
    return ExitStatus::io_error;
  }
}

}  // namespace

int main(int argc, char** argv) {
  // A reader of our output that goes away is an error to report, not a reason to die silently.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  std::ios::sync_with_stdio(false);
  ExitStatus status = ExitStatus::done;
  const auto line = brum::tools::parse_command_line(argc, argv, status);
  if (line) {
    status = run(*line);
  }
  return static_cast<int>(status);
}
