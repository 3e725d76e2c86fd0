#ifndef BRUM_PRINTERS_TEXT_PIECE_H
#define BRUM_PRINTERS_TEXT_PIECE_H

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <string_view>
#include <utility>

#include "brum/printers/write_text.h"

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

/// A text of several parts on its way to a stream: short parts are gathered, as writing each of
/// them would cost more than copying it; long ones are written as they are.
///
///     TextPiece piece(out);
///     piece.add('(');
///     piece.add(name);
///     piece.add(')');
///     piece.write();
class TextPiece {
 public:
  /// So many bytes of literals may come between two texts, before the first and after the last.
  static constexpr std::size_t most_between = 32;

  explicit TextPiece(std::ostream& out) : out_(out) {}
  TextPiece(const TextPiece&) = delete;
  TextPiece& operator=(const TextPiece&) = delete;
  ~TextPiece() = default;

  /// Adds a text. This and the other functions throw what write_text() throws.
  void add(std::string_view text) {
    if (size_ + text.size() > most_gathered) {
      write();
      if (text.size() > most_gathered) {
        write_text(out_, text);
        return;
      }
    }
    copy_text(&bytes_[size_], text.data(), text.size());
    size_ += text.size();
  }

  void add(char byte) {
    assert(size_ < sizeof(bytes_));
    bytes_[size_++] = byte;
  }

  /// Adds a literal, whose length the compiler knows.
  template <std::size_t Size>
  void add(const char (&literal)[Size]) {
    assert(Size - 1 <= sizeof(bytes_) - size_);
    std::memcpy(&bytes_[size_], literal, Size - 1);
    size_ += Size - 1;
  }

  /// Writes what was added and is not written yet. To be called at the end.
  void write() { write_text(out_, {&bytes_[0], std::exchange(size_, 0)}); }

 private:
  static constexpr std::size_t most_gathered = 256;

  std::ostream& out_;
  std::size_t size_ = 0;
  // NOLINTNEXTLINE(modernize-avoid-c-arrays): g++ 12 warns of one that is not filled
  char bytes_[most_gathered + most_between];  // cppcheck-suppress uninitMemberVar  ; written first
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TEXT_PIECE_H
