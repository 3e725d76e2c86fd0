#ifndef BRUM_TOOLS_SOURCE_WINDOW_H
#define BRUM_TOOLS_SOURCE_WINDOW_H

#include <cstddef>
#include <functional>
#include <optional>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

namespace brum::tools {

/// A line of a text, or what is still known of it.
struct SourceLine {
  std::string_view text;         // without its end
  std::size_t first_column = 1;  // where `text` begins in the line, in bytes from 1
};

/// Hands a text on and remembers the end of what was read, so that the line of an error can be
/// shown, also where the text comes from a pipe.
class SourceWindow : public std::streambuf {
 public:
  /// Reads from `source`, which must outlive the object, and tells `on_bytes` the number of bytes
  /// of each block read.
  SourceWindow(std::streambuf& source, std::function<void(std::size_t)> on_bytes);

  /// Gives the line with this number, counted from 1, if it is still known. Valid until more is
  /// read.
  std::optional<SourceLine> line(std::size_t number) const;

 protected:
  int_type underflow() override;
  std::streamsize xsgetn(char* target, std::streamsize count) override;

 private:
  static constexpr std::size_t block_bytes = std::size_t{1} << 12U;
  static constexpr std::size_t kept_bytes = std::size_t{1} << 20U;

  void keep(std::string_view block);
  void drop(std::size_t bytes);

  std::streambuf& source_;
  std::function<void(std::size_t)> on_bytes_;
  std::vector<char> block_;
  std::string window_;
  std::size_t first_line_ = 1;    // the number of the line that the window begins in
  std::size_t first_column_ = 1;  // and where in it
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_SOURCE_WINDOW_H
