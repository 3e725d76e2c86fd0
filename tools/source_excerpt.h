#ifndef BRUM_TOOLS_SOURCE_EXCERPT_H
#define BRUM_TOOLS_SOURCE_EXCERPT_H

#include <cstddef>
#include <string>

#include "source_window.h"

namespace brum::tools {

/// A part of a line that fits a terminal, and where the place of interest is in it.
struct SourceExcerpt {
  std::string text;        // every character takes one column; nothing in it moves the cursor
  std::size_t indent = 0;  // the columns before the place
};

/// Gives what of `line` fits into `width` columns around the byte `column` (counted from 1, at most
/// one behind the end). Three dots stand where the line is cut, a blank for a tab, and a question
/// mark for what cannot be shown.
SourceExcerpt source_excerpt(const SourceLine& line, std::size_t column, std::size_t width);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_SOURCE_EXCERPT_H
