#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/readers/smtlib1_reader.h"
#include "brum/readers/smtlib2_reader.h"
#include "tests/support/build_kind.h"
#include "tests/support/term_generator.h"

// The readers give back the very terms that the printers wrote.

namespace brum::testing {

namespace {

using Sorts = hsh::HashMap<std::string, const DataType*>;

/// The uninterpreted sorts of the generator.
constexpr std::array sort_names = {"S", "a sort", "U0"};

/// A text with what it takes to read it.
struct Written {
  std::string text;
  Sorts sorts;  // by the names that the printer invented
};

/// Keeps what was written and the sorts that the printer named.
void keep(Written& written, TermManager& mgr, SmtLibTermPrinter& printer,
          const std::ostringstream& out) {
  written.text = out.str();
  for (const char* name : sort_names) {
    const DataType* sort = mgr.make_uninterpreted_type(name);
    const std::string text = printer.to_smtlib(sort);
    if (!text.empty())
      written.sorts[text] = sort;
  }
}

ReaderOptions options_for(const Written& written, const std::string& logic, bool use_signature) {
  ReaderOptions options;
  options.sorts = &written.sorts;
  options.logic = logic;
  options.use_signature = use_signature;
  return options;
}

/// Reads a document and gives its last assertion.
template <class Reader>
const Term* read_document(TermManager& mgr, const Written& written, const ReaderOptions& options) {
  std::istringstream in(written.text);
  Script script;
  Reader(mgr, options).read(in, script);
  return script.at_end().assertions.back();
}

template <class Reader>
const Term* read_term(TermManager& mgr, const Written& written, const std::string& logic) {
  std::istringstream in(written.text);
  return Reader(mgr, options_for(written, logic, true)).read_term(in);
}

/// A form of text: how a formula is written in it, and read.
struct Form {
  const char* name;
  bool is_v1;
  void (*write)(TermManager& mgr, const Term* term, const std::string& logic, Written& written);
  const Term* (*read)(TermManager& mgr, const Written& written, const std::string& logic);
};

template <bool v1_format>
void write_formula(TermManager& mgr, const Term* term, const std::string& logic, Written& written) {
  SmtLibTermPrinter printer(v1_format, &mgr, logic, "");
  std::ostringstream out;
  printer.print_formula(out, term);
  keep(written, mgr, printer, out);
}

template <bool v1_format>
void write_single(TermManager& mgr, const Term* term, const std::string& /*logic*/,
                  Written& written) {
  SmtLibTermPrinter printer(v1_format, &mgr, "", "");
  std::ostringstream out;
  printer.print_single_term(out, term, true);
  written.text = out.str();
}

template <bool define_fun>
void write_version_2(TermManager& mgr, const Term* term, const std::string& logic,
                     Written& written) {
  SmtLib2TermPrinter printer(&mgr, logic, "", define_fun, nullptr);
  std::ostringstream out;
  printer.print_formula(out, term);
  keep(written, mgr, printer, out);
}

/// The script that names a term, with an assertion of that name.
void write_terms(TermManager& mgr, const Term* term, const std::string& logic, Written& written) {
  SmtLib2TermPrinter printer(&mgr, logic, "", true, nullptr);
  std::ostringstream out;
  printer.print_terms(out, {term});
  std::string label;
  printer.get_define_label(term, label);
  out << "(assert " << label << ")\n";
  keep(written, mgr, printer, out);
}

template <bool define_fun>
void write_trace(TermManager& mgr, const Term* term, const std::string& /*logic*/,
                 Written& written) {
  SmtLib2TermPrinter printer(&mgr, "", "", define_fun, nullptr);
  std::ostringstream out;
  for (const char* name : sort_names)
    printer.print_type_declaration(out, mgr.make_uninterpreted_type(name));
  printer.apitracer_print_term(out, term, "");
  keep(written, mgr, printer, out);
}

template <class Reader>
const Term* read_plain(TermManager& mgr, const Written& written, const std::string& /*logic*/) {
  return read_document<Reader>(mgr, written, options_for(written, "", false));
}

const Term* read_trace(TermManager& mgr, const Written& written, const std::string& logic) {
  return read_document<SmtLib2Reader>(mgr, written, options_for(written, logic, true));
}

constexpr std::array forms = {
    Form{"v1", true, write_formula<true>, read_plain<SmtLib1Reader>},
    Form{"v2", false, write_formula<false>, read_plain<SmtLib2Reader>},
    Form{"define-fun", false, write_version_2<true>, read_plain<SmtLib2Reader>},
    Form{"v2 with let", false, write_version_2<false>, read_plain<SmtLib2Reader>},
    Form{"terms", false, write_terms, read_plain<SmtLib2Reader>},
    Form{"trace", false, write_trace<true>, read_trace},
    Form{"trace with let", false, write_trace<false>, read_trace},
    Form{"v1 term", true, write_single<true>, read_term<SmtLib1Reader>},
    Form{"v2 term", false, write_single<false>, read_term<SmtLib2Reader>},
};

/// A kind of formulas: what they hold, and a logic that says of which sort numerals are.
struct Content {
  TermGeneratorOptions options;
  std::string logic;
};

Content content_for(bool is_v1, std::size_t kind) {
  Content content;
  if (kind % 3 == 2) {
    content.options = TermGeneratorOptions::for_real_logic();
    content.logic = "QF_AUFBVNRA";
  }
  if (is_v1) {
    const TermGeneratorOptions limits = TermGeneratorOptions::for_version_1();
    content.options.all_arrays = limits.all_arrays;
    content.options.boolean_arguments = limits.boolean_arguments;
    content.options.real_operators_over_integers = limits.real_operators_over_integers;
    content.options.v1_names = limits.v1_names;
  }
  content.options.arbitrary_names = kind % 2 == 1;
  return content;
}

/// Writes a formula and reads it; gives whether it came back.
bool comes_back(const Form& form, TermManager& mgr, const Term* formula, const std::string& logic) {
  Written written;
  form.write(mgr, formula, logic, written);
  const std::size_t num_terms = mgr.num_terms();
  try {
    const Term* read = form.read(mgr, written, logic);
    EXPECT_EQ(read, formula) << form.name << ":\n" << written.text;
    EXPECT_EQ(mgr.num_terms(), num_terms) << form.name << ":\n" << written.text;
    return read == formula && mgr.num_terms() == num_terms;
  } catch (const Exception& error) {
    ADD_FAILURE() << form.name << ": " << error.what() << "\n" << written.text;
    return false;
  }
}

/// How many formulas to write and read in all forms together. BRUM_READ_BACK_TERMS changes it.
std::size_t formulas_in_all() {
  const char* wanted = std::getenv("BRUM_READ_BACK_TERMS");
  return wanted == nullptr ? large_size(100000) : std::stoull(wanted);
}

/// Mostly small formulas, sometimes large ones.
std::size_t any_size(TermGenerator& generator) {
  const std::size_t chosen = generator.pick(100);
  if (chosen < 70)
    return 1 + generator.pick(8);
  return chosen < 99 ? 8 + generator.pick(40) : 300;
}

class ReadBack : public ::testing::TestWithParam<Form> {};

TEST_P(ReadBack, RandomFormulasComeBackAsTheSameTerms) {
  const Form& form = GetParam();
  const std::size_t wanted = formulas_in_all() / forms.size() + 1;
  constexpr std::size_t of_one_manager = 200;
  std::size_t done = 0;
  std::size_t applications = 0;
  for (std::uint64_t seed = 0; done < wanted; ++seed) {
    const Content content = content_for(form.is_v1, seed);
    TermManager mgr;
    TermGenerator generator(mgr, seed, content.options);
    for (std::size_t i = 0; i < of_one_manager && done < wanted; ++i, ++done) {
      const Term* formula = generator.formula(any_size(generator));
      ASSERT_TRUE(comes_back(form, mgr, formula, content.logic)) << "seed " << seed << ", " << i;
    }
    applications += mgr.num_terms();
  }
  RecordProperty("formulas", std::to_string(done));
  RecordProperty("terms", std::to_string(applications));
}

std::string name_of(const ::testing::TestParamInfo<Form>& info) {
  std::string name = info.param.name;
  for (char& byte : name)
    byte = byte == ' ' || byte == '-' ? '_' : byte;
  return name;
}

INSTANTIATE_TEST_SUITE_P(Forms, ReadBack, ::testing::ValuesIn(forms), name_of);

}  // namespace

}  // namespace brum::testing
