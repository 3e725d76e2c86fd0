#include "batch.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "batch_plan.h"
#include "conversion.h"
#include "diagnostics.h"
#include "message_text.h"
#include "processes.h"
#include "progress_bar.h"

namespace brum::tools {

namespace {

/// The conversions of a batch and what they gave so far.
class Batch {
 public:
  Batch(std::vector<CommandLine> plan, const Terminal& terminal, ProgressBar& bar)
      : plan_(std::move(plan)), terminal_(terminal), bar_(bar), messages_(plan_.size()) {}

  void run(std::size_t jobs) {
    run_in_processes(
        plan_.size(), jobs, [this](std::size_t i) { return convert_one(plan_[i]); },
        [this](std::size_t i, const ProcessEnd& end) { note_end(i, end); },
        [this] { show_progress(); });
  }

  ExitStatus status() const { return status_; }
  std::size_t count() const { return plan_.size(); }
  std::size_t failed() const { return failed_; }

 private:
  /// What the process of one input does.
  int convert_one(const CommandLine& line) const {
    // Where the folder cannot be made, opening the file says why.
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(line.output).parent_path(), ignored);
    ProgressBar no_bar(Terminal{}, std::cerr);
    const ExitStatus status = convert(line, terminal_, no_bar);
    std::cerr.flush();
    return static_cast<int>(status);
  }

  void note_end(std::size_t i, const ProcessEnd& end) {
    ++done_;
    auto status = static_cast<ExitStatus>(end.status);
    messages_[i] = end.messages;
    if (end.signal != 0) {
      status = ExitStatus::io_error;
      *messages_[i] += message_text(plan_[i].input_name()) + ": error: signal " +
                       std::to_string(end.signal) + " ended the conversion\n";
    }
    failed_ += status == ExitStatus::done ? 0U : 1U;
    status_ = std::max(status_, status);
    write_messages();
  }

  /// Writes the messages of the next inputs that are done.
  void write_messages() {
    for (; told_ < messages_.size() && messages_[told_]; ++told_) {
      if (!messages_[told_]->empty()) {
        bar_.clear();
        std::cerr << *messages_[told_];
        messages_[told_]->clear();
      }
    }
  }

  void show_progress() {
    std::string text = std::to_string(done_) + " of " + std::to_string(count());
    if (failed_ != 0) {
      text += ", " + std::to_string(failed_) + " failed";
    }
    bar_.show(static_cast<double>(done_) / static_cast<double>(count()), text);
  }

  std::vector<CommandLine> plan_;
  const Terminal& terminal_;
  ProgressBar& bar_;
  std::vector<std::optional<std::string>> messages_;  // of those that are done
  std::size_t told_ = 0;                              // so many messages are written
  std::size_t done_ = 0;
  std::size_t failed_ = 0;
  ExitStatus status_ = ExitStatus::done;
};

}  // namespace

ExitStatus run_batch(const CommandLine& line, const Terminal& terminal) {
  ProgressBar bar(terminal, std::cerr);
  Diagnostics diagnostics("brumlin", terminal, bar, std::cerr);
  try {
    Batch batch(plan_batch(line), terminal, bar);
    batch.run(line.jobs);
    if (batch.failed() != 0 && batch.count() > 1) {
      diagnostics.error(std::to_string(batch.failed()) + " of " + std::to_string(batch.count()) +
                        " inputs were not written");
    }
    return batch.status();
  } catch (const BadBatch& problem) {
    diagnostics.error(problem.what());
    return ExitStatus::bad_input;
  } catch (const std::exception& problem) {
    diagnostics.error(problem.what());
    return ExitStatus::io_error;
  }
}

}  // namespace brum::tools
