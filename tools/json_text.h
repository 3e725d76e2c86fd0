#ifndef BRUM_TOOLS_JSON_TEXT_H
#define BRUM_TOOLS_JSON_TEXT_H

#include <string>
#include <string_view>

namespace brum::tools {

/// Gives `text` as a string of JSON (RFC 8259), quotation marks included. Bytes that are no UTF-8
/// become the replacement character U+FFFD.
std::string json_string(std::string_view text);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_JSON_TEXT_H
