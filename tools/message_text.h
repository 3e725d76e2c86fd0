#ifndef BRUM_TOOLS_MESSAGE_TEXT_H
#define BRUM_TOOLS_MESSAGE_TEXT_H

#include <string>
#include <string_view>

namespace brum::tools {

/// Gives a text as messages show it, on one line and harmless to a terminal: escapes as `\n` and
/// `\x1b` stand for control characters and for bytes that are not UTF-8. Names and messages may
/// hold what the input holds.
std::string message_text(std::string_view text);

/// The same with dots for the middle of a text that is very long. Its end says what was expected.
std::string short_message_text(std::string_view text);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_MESSAGE_TEXT_H
