#ifndef BRUM_UTILS_EXCEPTION_H
#define BRUM_UTILS_EXCEPTION_H

#include <exception>
#include <iosfwd>
#include <sstream>
#include <string>

#include "brum/utils/export.h"

namespace brum {

/**
 * Root of all errors that this library reports.
 *
 * The message lives in an output stream, so that whoever holds the object on its way up may append
 * to it:
 *
 *     catch (Exception& error) { error.stream() << " in file " << name; throw; }
 *
 * The stream writes numbers in the classic locale. Objects are thrown by value and may be copied; a
 * copy holds the same text and is independent of its source.
 */
class BRUM_EXPORT Exception : public std::exception {
 public:
  /**
   * Makes an error whose text is the whole of `msg`, NUL bytes included, and runs
   * `dump_msg_and_raise_assertion` once. Throws std::bad_alloc when there is no memory for the
   * text.
   */
  explicit Exception(const std::string& msg);

  /**
   * Copies the text without running the diagnostic hook. Without memory for the text, the copy's
   * text is empty.
   */
  Exception(const Exception& other) noexcept;

  Exception& operator=(const Exception&) = delete;

  ~Exception() noexcept override;

  /**
   * Gives the current text of the stream, up to its first NUL byte, or "" when there is no memory
   * to copy it. The pointer holds until the next call of `what` or the end of the object.
   */
  const char* what() const noexcept override;

  /** The message stream. Text written to it shows in the next `what`. */
  std::ostringstream& stream() { return message; }

  /**
   * Hook of the diagnostics, run at the end of every construction from a message: writes the
   * message and a line end to the diagnostic stream if one is set, and always returns normally.
   */
  void dump_msg_and_raise_assertion() noexcept;

  /**
   * Sets the stream that gets the message of every error from the moment it is made, also of those
   * that are caught later; null, the setting at start, turns this off. The stream must live until
   * another one is set. May be called from any thread; writes of different errors do not mix. Gives
   * the stream that was set before.
   */
  static std::ostream* set_diagnostic_stream(std::ostream* stream) noexcept;

 private:
  std::ostringstream message;
  mutable std::string text_cache;
};

}  // namespace brum

#endif
