#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/support/build_kind.h"
#include "tests/support/term_generator.h"
#include "tests/support/written_forms.h"

// The readers give back the very terms that the printers wrote.

namespace brum::testing {

namespace {

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
bool comes_back(const WrittenForm& form, TermManager& mgr, const Term* formula,
                const std::string& logic) {
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

class ReadBack : public ::testing::TestWithParam<WrittenForm> {};

TEST_P(ReadBack, RandomFormulasComeBackAsTheSameTerms) {
  const WrittenForm& form = GetParam();
  const std::size_t wanted = formulas_in_all() / written_forms().size() + 1;
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

std::string name_of(const ::testing::TestParamInfo<WrittenForm>& info) {
  std::string name = info.param.name;
  for (char& byte : name)
    byte = byte == ' ' || byte == '-' ? '_' : byte;
  return name;
}

INSTANTIATE_TEST_SUITE_P(Forms, ReadBack,
                         ::testing::ValuesIn(written_forms().begin(), written_forms().end()),
                         name_of);

}  // namespace

}  // namespace brum::testing
