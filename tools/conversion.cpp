#include "conversion.h"

#include <exception>
#include <iostream>
#include <new>
#include <optional>
#include <string>

#include "brum/printers/term_printer.h"
#include "brum/readers/read_error.h"
#include "brum/readers/script.h"
#include "diagnostics.h"
#include "documents.h"
#include "input.h"
#include "introduced.h"
#include "message_text.h"
#include "output.h"
#include "output_watch.h"
#include "source_window.h"
#include "statistics.h"

namespace brum::tools {

namespace {

/// Thrown when two texts would be written to one file.
class SharedFile : public Exception {
 public:
  explicit SharedFile(const std::string& msg) : Exception(msg) {}
};

/// The reading of one input and the writing of its document.
class Conversion {
 public:
  /// All references must outlive the object.
  Conversion(const CommandLine& line, const Terminal& terminal, ProgressBar& bar,
             Diagnostics& diagnostics)
      : line_(line), terminal_(terminal), bar_(bar), diagnostics_(diagnostics) {}

  /// Throws what goes wrong. A ReadError was told to the user then.
  void run() {
    // Where both texts go is found before a file is open.
    const Destination place(line_.output);
    std::optional<Destination> place_of_definitions;
    if (!line_.introduced.empty()) {
      place_of_definitions.emplace(line_.introduced);
      if (share_a_file(place, *place_of_definitions)) {
        throw SharedFile("--introduced: the document goes to that file");
      }
    }
    Output output(place);
    std::optional<Output> definitions;
    if (place_of_definitions) {
      definitions.emplace(*place_of_definitions);
    }
    const Stopwatch reading;
    read();
    statistics_.seconds_reading = reading.seconds();
    const Stopwatch printing;
    const DocumentSource source{line_, script_, manager_, diagnostics_, statistics_};
    write(source, output.stream());
    if (definitions) {
      write_introduced(source, definitions->stream());
      definitions->finish();
    }
    statistics_.bytes = output.finish();
    // No file is replaced before all is written, and the definitions only with their document.
    output.commit();
    if (definitions) {
      definitions->commit();
    }
    statistics_.seconds_printing = printing.seconds();
    bar_.clear();
    print_statistics();
  }

 private:
  /// Where a person looks, the text is watched on its way to the reader.
  void read() {
    Input input(line_);
    std::size_t bytes = 0;
    std::optional<SourceWindow> window;
    if (terminal_.is_terminal) {
      window.emplace(input.text(), [&](std::size_t more) {
        bytes += more;
        show_reading(bytes, input.bytes());
      });
    }
    std::streambuf& text = window ? static_cast<std::streambuf&>(*window) : input.text();
    try {
      read_input(line_, text, manager_, script_);
    } catch (const ReadError& problem) {
      diagnostics_.error_at(problem, window ? window->line(problem.position().line) : std::nullopt);
      throw;
    }
  }

  void show_reading(std::size_t bytes, std::size_t of) {
    if (of == 0) {
      bar_.show("reading");
    } else {
      bar_.show(static_cast<double>(bytes) / static_cast<double>(of), "reading");
    }
  }

  void write(const DocumentSource& source, std::ostream& out) {
    if (!bar_.is_active()) {
      write_document(source, out);
      return;
    }
    constexpr std::size_t mebibyte = std::size_t{1} << 20U;
    OutputWatch watch(out, [this](std::size_t bytes) {
      bar_.show("writing, " + std::to_string(bytes / mebibyte) + " MiB");
    });
    std::ostream watched(&watch);
    watched.exceptions(std::ios_base::badbit);  // those of `out`, memory that ends for one
    write_document(source, watched);
  }

  void print_statistics() {
    switch (line_.stats) {
      case StatsFormat::none:
        break;
      case StatsFormat::text:
        if (line_.is_batch()) {
          std::cerr << "input: " << message_text(line_.input_name()) << '\n';
        }
        statistics_.print(std::cerr);
        break;
      case StatsFormat::json:
        statistics_.print_json(std::cerr, line_.input_name(), line_.output, word_of(line_.form));
        break;
    }
  }

  const CommandLine& line_;
  const Terminal& terminal_;
  ProgressBar& bar_;
  Diagnostics& diagnostics_;
  Statistics statistics_;
  TermManager manager_;
  Script script_;
};

}  // namespace

ExitStatus convert(const CommandLine& line, const Terminal& terminal, ProgressBar& bar) {
  Diagnostics diagnostics(line.input_name(), terminal, bar, std::cerr);
  try {
    Conversion(line, terminal, bar, diagnostics).run();
    return ExitStatus::done;
  } catch (const ReadError&) {
    return ExitStatus::bad_input;
  } catch (const SharedFile& problem) {
    diagnostics.error_of_command(problem.what());
    return ExitStatus::bad_input;
  } catch (const NoSuchQuery& problem) {
    diagnostics.error(problem.what());
    return ExitStatus::bad_input;
  } catch (const CannotExpress& problem) {
    diagnostics.error(problem.what());
    return ExitStatus::cannot_express;
  } catch (const TermPrinter::error& problem) {
    diagnostics.error(problem.what());
    return ExitStatus::cannot_express;
  } catch (const std::bad_alloc&) {
    diagnostics.error_of_command("out of memory");
    return ExitStatus::io_error;
  } catch (const std::exception& problem) {
    diagnostics.error_of_command(problem.what());
    return ExitStatus::io_error;
  }
}

}  // namespace brum::tools
