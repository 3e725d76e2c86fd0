#include "source_excerpt.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "utf8.h"

namespace brum::tools {

namespace {

/// Gives what stands on the screen for one character, or for a byte that is in none.
std::string_view shown_as(std::string_view character) {
  if (character == "\t" || character == "\r") {
    return " ";
  }
  return is_shown(character) ? character : "?";
}

constexpr std::size_t most_bytes_of_character = 4;

}  // namespace

SourceExcerpt source_excerpt(const SourceLine& line, std::size_t column, std::size_t width) {
  // Of a long line only what may be shown is looked at.
  const std::size_t place =
      std::min(column < line.first_column ? 0 : column - line.first_column, line.text.size());
  const std::size_t reach = width * most_bytes_of_character;
  const std::size_t from = place > reach ? place - reach : 0;
  const std::size_t to = std::min(line.text.size(), place + reach);

  std::vector<std::string_view> characters;
  std::size_t caret = 0;
  for (std::size_t at = from; at < to;) {
    if (at <= place) {
      caret = characters.size();
    }
    const std::size_t length = std::max<std::size_t>(1, utf8_length(line.text.substr(at, to - at)));
    characters.push_back(shown_as(line.text.substr(at, length)));
    at += length;
  }
  if (place >= to) {
    caret = characters.size();
  }

  constexpr std::string_view dots = "...";
  const std::size_t before = width * 2 / 3;
  const std::size_t surplus = characters.size() - std::min(characters.size(), width);
  const std::size_t first = std::min(surplus, caret > before ? caret - before : 0);
  const std::size_t last = std::min(characters.size(), first + width);
  const bool cut_before = first > 0 || from > 0 || line.first_column > 1;
  const bool cut_behind = last < characters.size() || to < line.text.size();
  SourceExcerpt excerpt;
  excerpt.indent = caret - first;
  for (std::size_t i = first; i < last; ++i) {
    const bool is_dot = (cut_before && i - first < dots.size() && i != caret) ||
                        (cut_behind && last - i <= dots.size() && i != caret);
    excerpt.text += is_dot ? "." : characters[i];
  }
  return excerpt;
}

}  // namespace brum::tools
