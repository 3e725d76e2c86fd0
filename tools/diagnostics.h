#ifndef BRUM_TOOLS_DIAGNOSTICS_H
#define BRUM_TOOLS_DIAGNOSTICS_H

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "brum/readers/read_error.h"
#include "progress_bar.h"
#include "source_window.h"
#include "terminal.h"

namespace brum::tools {

/// Tells the user what went wrong, and what the document does not say as the input did. Each
/// message is one line, whatever is in it; on a terminal it is coloured, and the line of the input
/// may follow.
class Diagnostics {
 public:
  /// `input` is the input's name; `out` and `bar`, which gives way to messages, must outlive the
  /// object.
  Diagnostics(std::string input, const Terminal& terminal, ProgressBar& bar, std::ostream& out)
      : input_(std::move(input)), terminal_(terminal), bar_(bar), out_(out) {}

  /// Writes `INPUT: warning: MESSAGE`.
  void warn(const std::string& message);

  /// Writes `INPUT: error: MESSAGE`.
  void error(std::string_view message);

  /// Writes `brumlin: error: MESSAGE`, for what is not the input's fault.
  void error_of_command(std::string_view message);

  /// Writes `FILE:LINE:COLUMN: error: MESSAGE`; on a terminal then the line, where it is known,
  /// with a mark below the place.
  void error_at(const ReadError& problem, const std::optional<SourceLine>& line);

 private:
  enum class Style { place, error, warning, mark };

  void write(std::string_view place, Style style, std::string_view message);
  std::string styled(Style style, std::string_view text) const;

  std::string input_;
  Terminal terminal_;
  ProgressBar& bar_;
  std::ostream& out_;
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_DIAGNOSTICS_H
