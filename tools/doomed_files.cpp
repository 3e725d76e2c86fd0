#include "doomed_files.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>

namespace brum::tools {

namespace {

using Path = std::atomic<const char*>;
static_assert(Path::is_always_lock_free, "a handler of signals must not wait");

std::array<Path, 4> doomed{};

extern "C" void remove_files_and_end(int signal) {
  remove_doomed_files();
  // By now the signal does again what it does by default: it ends the process.
  static_cast<void>(std::raise(signal));
}

void handle_signals() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action {};
    if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
      action.sa_handler = remove_files_and_end;
      action.sa_flags = static_cast<int>(SA_RESETHAND);
      ::sigaction(signal, &action, nullptr);
    }
  }
}

void replace(const char* old_path, const char* new_path) noexcept {
  for (Path& path : doomed) {
    const char* expected = old_path;
    if (path.compare_exchange_strong(expected, new_path)) {
      return;
    }
  }
}

}  // namespace

void remove_doomed_files() noexcept {
  for (const Path& path : doomed) {
    if (const char* text = path.load(); text != nullptr) {
      ::unlink(text);
    }
  }
}

void doom_file(const char* path) noexcept {
  handle_signals();
  replace(nullptr, path);
}

void spare_file(const char* path) noexcept {
  replace(path, nullptr);
}

}  // namespace brum::tools
