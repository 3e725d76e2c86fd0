#ifndef BRUM_BENCH_PRINTERS_H
#define BRUM_BENCH_PRINTERS_H

#include <cstddef>
#include <ostream>
#include <span>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "brum/terms/term_manager.h"

namespace brum::bench {

/// A way of printing a formula with this library.
struct Form {
  std::string_view name;
  void (*print)(std::ostream& out, TermManager& manager, const Term* formula, const char* logic);
};

/// Every way: each version and mode, and last a printer whose hooks write nothing.
std::span<const Form> forms();

/// Gives the form of that name, null when there is none.
const Form* form_named(std::string_view name);

/// A buffer that counts bytes and keeps none.
class CountingBuffer : public std::streambuf {
 public:
  std::size_t count() const { return count_; }

 private:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;

  std::size_t count_ = 0;
};

/// Gives the lengths in bytes of the texts that a trace keeps once `formula` is asserted, for later
/// assertions to refer to: with definitions or, if not `define_fun`, with lets.
std::vector<std::size_t> kept_lengths(TermManager& manager, const Term* formula, const char* logic,
                                      bool define_fun);

/// Makes a string of each of these lengths, keeps all to the end and gives their bytes.
std::size_t keep_texts(std::span<const std::size_t> lengths);

/// Pieces of 8 bytes, the length of a typical token, appended to a string until it has `bytes`.
std::string append_tokens(std::size_t bytes);

/// The same, written to a stream piece by piece.
void write_tokens(std::ostream& out, std::size_t bytes);

}  // namespace brum::bench

#endif  // BRUM_BENCH_PRINTERS_H
