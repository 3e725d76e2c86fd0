#ifndef BRUM_TOOLS_OUTPUT_WATCH_H
#define BRUM_TOOLS_OUTPUT_WATCH_H

#include <cstddef>
#include <functional>
#include <ostream>
#include <streambuf>
#include <utility>

namespace brum::tools {

/// Hands a text on to another stream and tells how much it is. Errors are left to that stream.
class OutputWatch : public std::streambuf {
 public:
  /// `target` must outlive the object; `on_bytes` is told the number of bytes written so far, every
  /// 64 KiB or so.
  OutputWatch(std::ostream& target, std::function<void(std::size_t)> on_bytes)
      : target_(target), on_bytes_(std::move(on_bytes)) {}

 protected:
  int_type overflow(int_type byte) override {
    if (!traits_type::eq_int_type(byte, traits_type::eof())) {
      target_.put(traits_type::to_char_type(byte));
      count(1);
    }
    return traits_type::not_eof(byte);
  }

  std::streamsize xsputn(const char* text, std::streamsize length) override {
    target_.write(text, length);
    count(static_cast<std::size_t>(length));
    return length;
  }

 private:
  static constexpr std::size_t step_bytes = std::size_t{1} << 16U;

  void count(std::size_t bytes) {
    bytes_ += bytes;
    if (bytes_ - told_ >= step_bytes) {
      told_ = bytes_;
      on_bytes_(bytes_);
    }
  }

  std::ostream& target_;
  std::function<void(std::size_t)> on_bytes_;
  std::size_t bytes_ = 0;
  std::size_t told_ = 0;
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_OUTPUT_WATCH_H
