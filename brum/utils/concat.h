#ifndef BRUM_UTILS_CONCAT_H
#define BRUM_UTILS_CONCAT_H

#include <initializer_list>
#include <string>
#include <string_view>

namespace brum {

/// Gives the pieces one after another in one string of exactly their length.
inline std::string concat(std::initializer_list<std::string_view> pieces) {
  std::size_t length = 0;
  for (const std::string_view piece : pieces) {
    length += piece.size();
  }
  std::string text;
  text.reserve(length);
  for (const std::string_view piece : pieces) {
    text += piece;
  }
  return text;
}

}  // namespace brum

#endif  // BRUM_UTILS_CONCAT_H
