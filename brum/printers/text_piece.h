#ifndef BRUM_PRINTERS_TEXT_PIECE_H
#define BRUM_PRINTERS_TEXT_PIECE_H

#include <cassert>
#include <cstddef>
#include <cstring>
#include <memory>
#include <ostream>
#include <string_view>

#include "brum/printers/copy_text.h"
#include "brum/printers/write_text.h"

namespace brum {

/// Memory for pieces that have no room in the buffer of their stream. Serves for one after another.
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

/// A text that is put together and goes to a stream as one: right in the buffer of the stream if
/// that has room for it, else in a PieceMemory. Nothing else may go to the stream meanwhile.
///
///     TextPiece piece(out, memory, 2 + name.size());
///     piece.add('(');
///     piece.add(name);
///     piece.add(')');
///     piece.write();
class TextPiece {
 public:
  /// A text of more bytes is long: copying it counts. It is better written as TextParts.
  static constexpr std::size_t long_bytes = 16384;

  /// Begins a piece of at most `most_bytes` bytes. Throws std::bad_alloc.
  TextPiece(std::ostream& out, PieceMemory& memory, std::size_t most_bytes)
      : out_(out),
        place_(is_ready(out) ? PutArea::room_for(*out.rdbuf(), most_bytes) : nullptr),
        begin_(place_ != nullptr ? place_ : memory.room_for(most_bytes)),
        end_(begin_),
        most_bytes_(most_bytes) {}

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

  /// The number of bytes that add() adds.
  static constexpr std::size_t size_of(std::string_view text) { return text.size(); }
  template <std::size_t Size>
  static constexpr std::size_t size_of(const char (&/*literal*/)[Size]) {
    return Size - 1;
  }

  /// Ends the piece: what was added is written, as by write_text().
  void write() {
    const auto size = static_cast<std::size_t>(end_ - begin_);
    if (place_ != nullptr) {
      PutArea::advance(*out_.rdbuf(), size);
    } else {
      write_text(out_, {begin_, size});
    }
  }

 private:
  bool has_room_for(std::size_t bytes) const {
    return bytes <= most_bytes_ - static_cast<std::size_t>(end_ - begin_);
  }

  std::ostream& out_;
  char* place_;  // in the buffer of the stream, or null
  char* begin_;
  char* end_;
  std::size_t most_bytes_;
};

/// A text that goes to a stream part by part as it is added: for long ones, which mostly find no
/// room in a buffer and would be copied once more as a TextPiece.
class TextParts {
 public:
  explicit TextParts(std::ostream& out) : out_(out) {}

  void add(char byte) { write_text(out_, {&byte, 1}); }
  void add(std::string_view text) { write_text(out_, text); }

 private:
  std::ostream& out_;
};

/// Writes texts one after another as one piece: literals and what becomes a std::string_view.
/// Always inline, as there the compiler knows the lengths of literals. Throws std::bad_alloc.
template <class... Parts>
[[gnu::always_inline]] inline void write_parts(std::ostream& out, PieceMemory& memory,
                                               const Parts&... parts) {
  TextPiece piece(out, memory, (TextPiece::size_of(parts) + ...));
  (piece.add(parts), ...);
  piece.write();
}

}  // namespace brum

#endif  // BRUM_PRINTERS_TEXT_PIECE_H
