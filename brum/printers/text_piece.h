#ifndef BRUM_PRINTERS_TEXT_PIECE_H
#define BRUM_PRINTERS_TEXT_PIECE_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace brum {

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
      : begin_(memory.room_for(most_bytes)), end_(begin_) {}

  /// What was added so far.
  std::string_view text() const { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }

  void add(char byte) { *end_++ = byte; }

  void add(std::string_view text) {
    std::char_traits<char>::copy(end_, text.data(), text.size());
    end_ += text.size();
  }

 private:
  char* begin_;
  char* end_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TEXT_PIECE_H
