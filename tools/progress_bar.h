#ifndef BRUM_TOOLS_PROGRESS_BAR_H
#define BRUM_TOOLS_PROGRESS_BAR_H

#include <chrono>
#include <ostream>
#include <string_view>

#include "terminal.h"

namespace brum::tools {

/// A line on a terminal that says how far the work is: from one second after its making on, ten
/// times a second at most. Anywhere else it writes nothing.
class ProgressBar {
 public:
  /// `out` must outlive the object.
  ProgressBar(const Terminal& terminal, std::ostream& out) : terminal_(terminal), out_(out) {}
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar() { clear(); }

  /// Whether it will ever be seen.
  bool is_active() const { return terminal_.has_escapes; }

  /// Says that the part `done` (0 to 1) of the work is done; `what` says more.
  void show(double done, std::string_view what);

  /// Says `what` is being done, where it is not known how long that takes.
  void show(std::string_view what);

  /// Takes the line away, to be called before anything else is written to the terminal.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool is_due();
  void draw(std::string_view text);

  Terminal terminal_;
  std::ostream& out_;
  Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);
  bool is_drawn_ = false;
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_PROGRESS_BAR_H
