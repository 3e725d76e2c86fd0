#ifndef BRUM_PRINTERS_TEXT_PIECE_H
#define BRUM_PRINTERS_TEXT_PIECE_H

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace brum {

/// Puts together what goes to a stream in one piece. Keeps its memory from piece to piece.
class TextPiece {
 public:
  /// What was added since the last clear(); valid until more is added.
  std::string_view text() const { return {memory_.data(), used_}; }

  void clear() { used_ = 0; }

  /// Throws std::bad_alloc and then adds nothing.
  void add(std::string_view text) {
    if (text.size() > memory_.size() - used_) {
      make_room(text.size());
    }
    std::copy(text.begin(), text.end(), memory_.data() + used_);
    used_ += text.size();
  }

 private:
  void make_room(std::size_t bytes) { memory_.resize(std::max(used_ + bytes, memory_.size() * 2)); }

  std::vector<char> memory_ = std::vector<char>(256);
  std::size_t used_ = 0;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TEXT_PIECE_H
