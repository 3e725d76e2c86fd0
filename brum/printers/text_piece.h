#ifndef BRUM_PRINTERS_TEXT_PIECE_H
#define BRUM_PRINTERS_TEXT_PIECE_H

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

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

/// Memory in which a text is put together that goes to a stream in one piece. Serves for one piece
/// after another.
class PieceMemory {
 public:
  /// Gives room for `bytes` bytes; earlier room is gone. Throws std::bad_alloc.
  char* room_for(std::size_t bytes) {
    if (bytes > size_) {
      memory_ = std::make_unique_for_overwrite<char[]>(bytes * 2);
      size_ = bytes * 2;
    }
    return memory_.get();
  }

 private:
  std::unique_ptr<char[]> memory_;
  std::size_t size_ = 0;
};

/// A text that is put together in a PieceMemory.
///
///     TextPiece piece(memory, 2 + name.size());
///     piece.add('(');
///     piece.add(name);
///     piece.add(')');
///     write_text(out, piece.text());
class TextPiece {
 public:
  /// Begins a piece of at most `most_bytes` bytes. Throws std::bad_alloc.
  TextPiece(PieceMemory& memory, std::size_t most_bytes)
      : begin_(memory.room_for(most_bytes)), end_(begin_), most_bytes_(most_bytes) {}

  /// What was added so far.
  std::string_view text() const { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }

  void add(char byte) {
    assert(has_room_for(1));
    *end_++ = byte;
  }

  void add(std::string_view text) {
    assert(has_room_for(text.size()));
    copy_text(end_, text.data(), text.size());
    end_ += text.size();
  }

  /// Adds a literal, whose length the compiler knows.
  template <std::size_t Size>
  void add(const char (&literal)[Size]) {
    assert(has_room_for(Size - 1));
    std::memcpy(end_, literal, Size - 1);
    end_ += Size - 1;
  }

 private:
  bool has_room_for(std::size_t bytes) const {
    return bytes <= most_bytes_ - static_cast<std::size_t>(end_ - begin_);
  }

  char* begin_;
  char* end_;
  std::size_t most_bytes_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TEXT_PIECE_H
