#ifndef BRUM_PRINTERS_COPY_TEXT_H
#define BRUM_PRINTERS_COPY_TEXT_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace brum {

/// Copies `size` bytes, at least those of a `Word` and at most those of two, in two moves that may
/// overlap.
template <class Word>
void copy_ends(char* to, const char* from, std::size_t size) {
  Word first;
  Word last;
  std::memcpy(&first, from, sizeof(Word));
  std::memcpy(&last, from + size - sizeof(Word), sizeof(Word));
  std::memcpy(to, &first, sizeof(Word));
  std::memcpy(to + size - sizeof(Word), &last, sizeof(Word));
}

/// Copies `size` bytes. Most texts are labels and names: these are copied here, longer ones by the
/// C library.
inline void copy_text(char* to, const char* from, std::size_t size) {
  if (size > 2 * sizeof(std::uint64_t)) {
    std::memcpy(to, from, size);
  } else if (size >= sizeof(std::uint64_t)) {
    copy_ends<std::uint64_t>(to, from, size);
  } else if (size >= sizeof(std::uint32_t)) {
    copy_ends<std::uint32_t>(to, from, size);
  } else if (size > 0) {
    to[0] = from[0];
    to[size / 2] = from[size / 2];
    to[size - 1] = from[size - 1];
  }
}

}  // namespace brum

#endif  // BRUM_PRINTERS_COPY_TEXT_H
