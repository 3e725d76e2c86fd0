#include "number_memory.h"

#include <gmp.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "command_line.h"
#include "doomed_files.h"

namespace brum::tools {

namespace {

[[noreturn]] void end() {
  remove_doomed_files();
  constexpr std::string_view message = "brumlin: error: out of memory\n";
  // Nobody is left to be told that the message could not be written.
  [[maybe_unused]] const auto written = ::write(STDERR_FILENO, message.data(), message.size());
  std::_Exit(static_cast<int>(ExitStatus::io_error));
}

void* allocate(std::size_t bytes) {
  void* const block = std::malloc(bytes);
  if (block == nullptr) {
    end();
  }
  return block;
}

void* reallocate(void* block, std::size_t /*old_bytes*/, std::size_t bytes) {
  void* const larger = std::realloc(block, bytes);
  if (larger == nullptr) {
    end();
  }
  return larger;
}

void release(void* block, std::size_t /*bytes*/) {
  std::free(block);
}

}  // namespace

void end_in_order_without_memory_for_numbers() {
  mp_set_memory_functions(allocate, reallocate, release);
}

}  // namespace brum::tools
