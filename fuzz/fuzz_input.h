#ifndef BRUM_FUZZ_FUZZ_INPUT_H
#define BRUM_FUZZ_FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

namespace brum::fuzz {

/// The bytes of an input as a sequence of choices. Behind their end follows a fixed sequence, so
/// that whoever waits for another choice gets one.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

  bool at_end() const { return next_ >= bytes_.size(); }

  std::uint8_t byte() {
    if (!at_end())
      return bytes_[next_++];
    sequence_ = sequence_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::uint8_t>(sequence_ >> 56U);
  }

  /// Gives a number from 0 up to but not `bound`, out of as many bytes as the largest takes.
  std::uint64_t below(std::uint64_t bound) {
    std::uint64_t value = 0;
    for (std::uint64_t largest = bound - 1; largest > 0; largest >>= 8U)
      value = value << 8U | byte();
    return value % bound;
  }

  /// Gives the next `length` bytes as text, fewer at the end.
  std::string text(std::size_t length) {
    const std::span<const std::uint8_t> left = bytes_.subspan(next_);
    const std::string taken(reinterpret_cast<const char*>(left.data()),
                            std::min(left.size(), length));
    next_ += taken.size();
    return taken;
  }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t next_ = 0;
  std::uint64_t sequence_ = 1;
};

/// Ends the program, so that the input is kept as a finding, unless `holds`.
inline void require(bool holds, const char* what, const std::string& detail = {}) {
  if (holds)
    return;
  std::fprintf(stderr, "does not hold: %s\n%s\n", what, detail.c_str());
  std::abort();
}

}  // namespace brum::fuzz

#endif  // BRUM_FUZZ_FUZZ_INPUT_H
