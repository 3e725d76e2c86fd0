#include "brum/utils/exception.h"

#include <ios>
#include <locale>
#include <mutex>
#include <ostream>

namespace brum {

namespace {

/**
 * Where errors are reported as they are made, and the lock that keeps the reports of several
 * threads apart.
 */
struct Diagnostics {
  std::mutex lock;
  std::ostream* stream = nullptr;
};

Diagnostics& diagnostics() noexcept {
  static Diagnostics the_diagnostics;
  return the_diagnostics;
}

void append(std::ostream& out, const std::string& text) {
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace

Exception::Exception(const std::string& msg) {
  message.imbue(std::locale::classic());
  // A stream swallows the exceptions of its buffer unless asked not to; a message cut short would
  // mislead.
  message.exceptions(std::ios_base::badbit);
  append(message, msg);
  message.exceptions(std::ios_base::goodbit);
  dump_msg_and_raise_assertion();
}

Exception::Exception(const Exception& other) noexcept : std::exception(other) {
  message.imbue(std::locale::classic());
  try {
    append(message, other.message.str());
  } catch (...) {
    // An error without its text is still the right error; one that cannot be copied would end the
    // program.
    message.clear(std::ios_base::badbit);
  }
}

Exception::~Exception() noexcept = default;

const char* Exception::what() const noexcept {
  try {
    text_cache = message.str();
    return text_cache.c_str();
  } catch (...) {
    return "";
  }
}

void Exception::dump_msg_and_raise_assertion() noexcept {
  try {
    const std::lock_guard guard(diagnostics().lock);
    if (std::ostream* const out = diagnostics().stream; out != nullptr) {
      append(*out, message.str() + '\n');
      out->flush();
    }
  } catch (...) {
    // The error itself is on its way to the caller; a report that cannot be written must not
    // replace it.
    return;
  }
}

std::ostream* Exception::set_diagnostic_stream(std::ostream* stream) noexcept {
  const std::lock_guard guard(diagnostics().lock);
  std::ostream* const previous = diagnostics().stream;
  diagnostics().stream = stream;
  return previous;
}

}  // namespace brum
