#include "diagnostics.h"

#include <algorithm>
#include <cstddef>

#include "message_text.h"
#include "source_excerpt.h"

namespace brum::tools {

std::string Diagnostics::styled(Style style, std::string_view text) const {
  if (!terminal_.has_colour) {
    return std::string(text);
  }
  std::string_view escape;
  switch (style) {
    case Style::place:
      escape = "\x1b[1m";  // bold
      break;
    case Style::error:
      escape = "\x1b[1;31m";  // bold red
      break;
    case Style::warning:
      escape = "\x1b[1;35m";  // bold magenta
      break;
    case Style::mark:
      escape = "\x1b[1;32m";  // bold green
      break;
  }
  return std::string(escape).append(text).append("\x1b[0m");
}

void Diagnostics::write(std::string_view place, Style style, std::string_view message) {
  bar_.clear();
  const std::string_view kind = style == Style::warning ? "warning:" : "error:";
  out_ << styled(Style::place, message_text(place) + ":") << ' ' << styled(style, kind) << ' '
       << short_message_text(message) << '\n';
}

void Diagnostics::warn(const std::string& message) {
  write(input_, Style::warning, message);
}

void Diagnostics::error(std::string_view message) {
  write(input_, Style::error, message);
}

void Diagnostics::error_of_command(std::string_view message) {
  write("brumlin", Style::error, message);
}

void Diagnostics::error_at(const ReadError& problem, const std::optional<SourceLine>& line) {
  const std::string number = std::to_string(problem.position().line);
  const std::size_t column = problem.position().column;
  write(problem.file() + ":" + number + ":" + std::to_string(column), Style::error,
        problem.message());
  if (!terminal_.is_terminal || !line) {
    return;
  }
  constexpr std::size_t narrowest = 20;
  const std::string margin = "  " + number + " | ";
  const std::size_t width =
      std::max(narrowest, terminal_.columns - std::min(terminal_.columns, margin.size() + 1));
  const SourceExcerpt excerpt = source_excerpt(*line, column, width);
  out_ << margin << excerpt.text << '\n'
       << std::string(margin.size() - 2, ' ') << "| " << std::string(excerpt.indent, ' ')
       << styled(Style::mark, "^") << '\n';
}

}  // namespace brum::tools
