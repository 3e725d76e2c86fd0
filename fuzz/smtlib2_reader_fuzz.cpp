// Any bytes as a script of version 2, and as a term of it.

#include "fuzz/read_and_print.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  brum::fuzz::read_and_print<brum::SmtLib2Reader>(data, size);
  brum::fuzz::read_as_term<brum::SmtLib2Reader>(data, size);
  return 0;
}
