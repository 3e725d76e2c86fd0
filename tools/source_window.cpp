#include "source_window.h"

#include <algorithm>
#include <utility>

namespace brum::tools {

SourceWindow::SourceWindow(std::streambuf& source, std::function<void(std::size_t)> on_bytes)
    : source_(source), on_bytes_(std::move(on_bytes)), block_(block_bytes) {}

SourceWindow::int_type SourceWindow::underflow() {
  const std::streamsize got =
      source_.sgetn(block_.data(), static_cast<std::streamsize>(block_.size()));
  if (got <= 0) {
    return traits_type::eof();
  }
  keep({block_.data(), static_cast<std::size_t>(got)});
  setg(block_.data(), block_.data(), block_.data() + got);
  return traits_type::to_int_type(block_.front());
}

std::streamsize SourceWindow::xsgetn(char* target, std::streamsize count) {
  const std::streamsize ready = std::min<std::streamsize>(count, egptr() - gptr());
  std::copy_n(gptr(), ready, target);
  setg(eback(), gptr() + ready, egptr());
  if (ready == count) {
    return count;
  }
  const std::streamsize got =
      std::max<std::streamsize>(0, source_.sgetn(target + ready, count - ready));
  keep({target + ready, static_cast<std::size_t>(got)});
  return ready + got;
}

void SourceWindow::keep(std::string_view block) {
  window_ += block;
  if (window_.size() > 2 * kept_bytes) {
    drop(window_.size() - kept_bytes);
  }
  on_bytes_(block.size());
}

void SourceWindow::drop(std::size_t bytes) {
  const std::string_view dropped = std::string_view(window_).substr(0, bytes);
  first_line_ += static_cast<std::size_t>(std::count(dropped.begin(), dropped.end(), '\n'));
  const std::size_t line_end = dropped.rfind('\n');
  first_column_ = line_end == std::string_view::npos ? first_column_ + bytes : bytes - line_end;
  window_.erase(0, bytes);
}

std::optional<SourceLine> SourceWindow::line(std::size_t number) const {
  if (number < first_line_) {
    return std::nullopt;
  }
  std::string_view rest = window_;
  for (std::size_t line = first_line_; line < number; ++line) {
    const std::size_t end = rest.find('\n');
    if (end == std::string_view::npos) {
      return std::nullopt;
    }
    rest.remove_prefix(end + 1);
  }
  return SourceLine{rest.substr(0, rest.find('\n')), number == first_line_ ? first_column_ : 1};
}

}  // namespace brum::tools
