#include "progress_bar.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace brum::tools {

bool ProgressBar::is_due() {
  if (!is_active()) {
    return false;
  }
  const Clock::time_point now = Clock::now();
  if (now < next_) {
    return false;
  }
  next_ = now + std::chrono::milliseconds(100);
  return true;
}

void ProgressBar::show(double done, std::string_view what) {
  if (!is_due()) {
    return;
  }
  constexpr std::size_t shortest = 10;
  constexpr std::size_t longest = 30;
  const std::size_t length = std::clamp(terminal_.columns / 3, shortest, longest);
  const double part = std::clamp(done, 0.0, 1.0);
  const auto full = static_cast<std::size_t>(part * static_cast<double>(length));
  const std::string percent = std::to_string(static_cast<int>(part * 100));
  std::string text = "[" + std::string(full, '=') + std::string(length - full, ' ') + "] ";
  text.append(3 - std::min<std::size_t>(3, percent.size()), ' ');
  draw(text.append(percent).append(" %, ").append(what));
}

void ProgressBar::show(std::string_view what) {
  if (is_due()) {
    draw(what);
  }
}

void ProgressBar::draw(std::string_view text) {
  // Without the last column, where some terminals begin a new line.
  out_ << '\r' << text.substr(0, terminal_.columns - 1) << "\x1b[K" << std::flush;
  is_drawn_ = true;
}

void ProgressBar::clear() {
  if (is_drawn_) {
    out_ << "\r\x1b[K" << std::flush;
    is_drawn_ = false;
  }
}

}  // namespace brum::tools
