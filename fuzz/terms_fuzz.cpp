// The bytes choose sorts, names and operations: a formula is built through the interface, printed
// in every form and read back, which must give the very same term.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "brum/printers/check_names.h"
#include "brum/printers/smtlib_term_printer.h"
#include "brum/readers/read_error.h"
#include "brum/utils/exception.h"
#include "fuzz/fuzz_input.h"
#include "tests/support/term_generator.h"
#include "tests/support/written_forms.h"

namespace brum::fuzz {

namespace {

using testing::TermGenerator;
using testing::TermGeneratorOptions;
using testing::WrittenForm;

/// What an input may build, by the bits of its first byte.
struct Content {
  TermGeneratorOptions options;
  std::string logic;
  bool fits_v1;

  explicit Content(std::uint8_t bits) : fits_v1((bits & 1U) != 0) {
    if ((bits & 2U) != 0) {
      options = TermGeneratorOptions::for_real_logic();
      logic = "QF_AUFBVNRA";
    }
    options.arbitrary_names = (bits & 4U) != 0;
    options.unwritable_names = (bits & 24U) == 24U;
    if (fits_v1) {
      const TermGeneratorOptions limits = TermGeneratorOptions::for_version_1();
      options.all_arrays = limits.all_arrays;
      options.boolean_arguments = limits.boolean_arguments;
      options.real_operators_over_integers = limits.real_operators_over_integers;
      options.v1_names = limits.v1_names;
    }
  }
};

/// A name with a NUL is refused, and nothing has changed.
void check_nul(TermManager& mgr, FuzzInput& input) {
  std::string name = input.text(3);
  name.push_back('\0');
  const Symbol* before = mgr.get_signature()->get_symbol(name.c_str());
  try {
    mgr.declare(name, mgr.get_bool_type());
    require(false, "a name with a NUL is refused");
  } catch (const TermManager::error&) {
    require(mgr.get_signature()->get_symbol(name.c_str()) == before, "it declares nothing");
  }
}

/// Any text may come of it, but only the documented errors.
void write_and_read_anyhow(const WrittenForm& form, TermManager& mgr, const Term* formula,
                           const std::string& logic) {
  testing::Written written;
  try {
    form.write(mgr, formula, logic, written);
    form.read(mgr, written, logic);
  } catch (const TermPrinter::error&) {
    require(form.is_v1, "version 2 writes every formula");
  } catch (const ReadError&) {
  }
}

void write_and_read_back(const WrittenForm& form, TermManager& mgr, const Term* formula,
                         const std::string& logic) {
  testing::Written written;
  form.write(mgr, formula, logic, written);
  const std::size_t num_terms = mgr.num_terms();
  try {
    const Term* read = form.read(mgr, written, logic);
    require(read == formula, form.name, written.text);
    require(mgr.num_terms() == num_terms, "reading back makes no terms", written.text);
  } catch (const Exception& error) {
    require(false, error.what(), written.text);
  }
}

/// An atom written out in full; for formulas in which that is short.
void write_atom(TermManager& mgr, const Term* formula, bool v1) {
  try {
    std::ostringstream out;
    SmtLibTermPrinter(v1, &mgr, "", "").print_atom(out, formula);
    require(!out.str().empty(), "an atom has a text");
  } catch (const TermPrinter::error&) {
    require(v1, "version 2 writes every atom");
  }
}

void run(FuzzInput& input) {
  const Content content(input.byte());
  TermManager mgr;
  TermGenerator generator(
      mgr, [&input](std::uint64_t bound) { return input.below(bound); }, content.options);
  constexpr std::size_t most_applications = 24;
  const std::size_t size = 1 + input.below(most_applications);
  const Term* formula = generator.formula(size);
  check_nul(mgr, input);
  for (const WrittenForm& form : testing::written_forms()) {
    const bool safe = check_names(mgr, {formula}, form.is_v1).empty();
    if (safe && (content.fits_v1 || !form.is_v1))
      write_and_read_back(form, mgr, formula, content.logic);
    else
      write_and_read_anyhow(form, mgr, formula, content.logic);
  }
  if (size < 8) {
    write_atom(mgr, formula, true);
    write_atom(mgr, formula, false);
  }
}

}  // namespace

}  // namespace brum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  brum::fuzz::FuzzInput input(data, size);
  brum::fuzz::run(input);
  return 0;
}
