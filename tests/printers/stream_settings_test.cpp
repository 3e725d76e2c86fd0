// The text is the same whatever the locale and the settings of the caller's stream.

#include <gtest/gtest.h>

#include <functional>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

#include "tests/printers/open_printers.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::OpenPrinter;
using testing::OpenPrinter2;

/// Numbers with a comma after each digit, and other names for true and false.
class EveryDigitApart : public std::numpunct<char> {
  char do_decimal_point() const override { return ';'; }
  char do_thousands_sep() const override { return ','; }
  std::string do_grouping() const override { return "\1"; }
  std::string do_truename() const override { return "wahr"; }
};

/// Makes a locale global for the length of a scope.
class GlobalLocale {
 public:
  explicit GlobalLocale(const std::locale& locale) : before_(std::locale::global(locale)) {}
  GlobalLocale(const GlobalLocale&) = delete;
  GlobalLocale& operator=(const GlobalLocale&) = delete;
  ~GlobalLocale() { std::locale::global(before_); }

 private:
  std::locale before_;
};

/// A formula with every kind of number in its text, and ids above a thousand.
struct FormulaOfNumbers {
  TermManager mgr;
  const DataType* sort = mgr.make_uninterpreted_type("A");
  const Term* formula;
  const Symbol* v;
  const Symbol* a;

  FormulaOfNumbers() {
    for (int i = 1; i <= 1200; ++i) {
      mgr.make_number(i);
    }
    const Term* x = testing::make_int(mgr, "x");                         // 1201
    const Term* sum = mgr.make_plus(x, mgr.make_number(1234567));        // 1202, 1203
    const Term* atom = mgr.make_leq(sum, sum);                           // 1204
    const Term* fraction = mgr.make_number(QNumber(-1234567, 7654321));  // 1205
    const Term* below = mgr.make_leq(fraction, testing::make_real(mgr, "r"));
    const Term* congruent = mgr.make_int_modular_congruence(7654321, x, x);
    const Term* word = testing::make_bv(mgr, "v", 65536);
    v = word->symbol;
    a = mgr.declare("a", mgr.make_array_type(word->sort(), mgr.make_bv_type(1024)));
    const Term* equal =
        mgr.make_equal(mgr.make_extract(54321, 12345, word), mgr.make_bv_number(1234567, 41977));
    formula = mgr.make_and(mgr.make_and(atom, below), mgr.make_and(congruent, equal));
  }
};

/// What a version writes of it: the formula, and declarations of a sort and two symbols.
void write_all(FormulaOfNumbers& f, bool v1, std::ostream& out) {
  OpenPrinter printer(v1, &f.mgr, "", "");
  printer.print_single_term(out, f.formula, false);
  out.write("\n", 1);
  printer.sort_counter = 1234567;
  printer.print_type_declaration(out, f.sort);
  printer.print_symbol_declaration(out, f.v);
  printer.print_symbol_declaration(out, f.a);
}

const char* const v1_text =
    "(let (?def_1203 (+ x 1234567)) (and (and (<= ?def_1203 ?def_1203) (<= (~ (/ 1234567 7654321)) "
    "r)) (and (divisible[7654321] (- x x)) (= (extract[54321:12345] v) bv1234567[41977]))))\n"
    ":extrasorts (U1234567)\n"
    ":extrafuns ((v BitVec[65536]))\n"
    ":extrafuns ((a Array[65536:1024]))\n";

const char* const v2_text =
    "(let ((.def_1203 (+ x 1234567))) (and (and (<= .def_1203 .def_1203) (<= (- (/ 1234567 "
    "7654321)) r)) (and ((_ divisible 7654321) (- x x)) (= ((_ extract 54321 12345) v) (_ "
    "bv1234567 "
    "41977)))))\n"
    "(declare-sort U1234567 0)\n"
    "(declare-fun v () (_ BitVec 65536))\n"
    "(declare-fun a () (Array (_ BitVec 65536) (_ BitVec 1024)))\n";

const std::vector<std::function<void(std::ostream&)>> settings = {
    [](std::ostream&) {},
    [](std::ostream& out) { out.imbue(std::locale(std::locale::classic(), new EveryDigitApart)); },
    [](std::ostream& out) { out << std::hex << std::showbase << std::uppercase; },
    [](std::ostream& out) { out << std::oct << std::showpos; },
    [](std::ostream& out) { out << std::setw(400) << std::setfill('*') << std::left; },
    [](std::ostream& out) { out << std::setw(7) << std::internal << std::setfill('0'); },
    [](std::ostream& out) { out << std::boolalpha << std::scientific << std::setprecision(1); },
    [](std::ostream& out) { out << std::unitbuf << std::skipws; },
};

void expect_the_same_text_under_every_setting() {
  FormulaOfNumbers f;
  for (std::size_t i = 0; i < settings.size(); ++i) {
    for (const bool v1 : {true, false}) {
      std::ostringstream out;
      settings[i](out);
      const auto flags = out.flags();
      const char fill = out.fill();
      write_all(f, v1, out);
      EXPECT_EQ(out.str(), v1 ? v1_text : v2_text) << "setting " << i;
      EXPECT_EQ(out.flags(), flags);
      EXPECT_EQ(out.fill(), fill);
    }
  }
}

TEST(StreamSettings, DoNotShowInTheText) {
  expect_the_same_text_under_every_setting();
}

TEST(StreamSettings, TheGlobalLocaleDoesNotShowInTheText) {
  const GlobalLocale scope(std::locale(std::locale::classic(), new EveryDigitApart));
  std::ostringstream control;
  control << 1234567;
  ASSERT_EQ(control.str(), "1,2,3,4,5,6,7");
  expect_the_same_text_under_every_setting();
  EXPECT_EQ(TermManager().make_bv_type(1234567)->to_str(), "(_ BitVec 1234567)");
}

TEST(StreamSettings, DoNotShowInScriptsAndTraces) {
  const GlobalLocale scope(std::locale(std::locale::classic(), new EveryDigitApart));
  TermManager mgr;
  for (int i = 1; i <= 1200; ++i) {
    mgr.make_number(i);
  }
  const Term* v = testing::make_bv(mgr, "v", 65536);  // 1201
  const Term* square = mgr.make_bvmul(v, v);          // 1202
  const Term* formula = mgr.make_bvule(square, square);
  for (const auto& setting : settings) {
    OpenPrinter2 printer(&mgr, "", "", true, nullptr);
    std::ostringstream out;
    setting(out);
    printer.print_terms(out, {square, formula});
    printer.apitracer_print_term(out, formula, ":named a");
    printer.print_atom(out, formula);
    EXPECT_EQ(out.str(),
              "(set-info :source |printed by Brumlin|)\n"
              "(declare-fun v () (_ BitVec 65536))\n"
              "(define-fun .def_1202 () (_ BitVec 65536) (bvmul v v))\n"
              "(define-fun .def_1203 () Bool (bvule .def_1202 .def_1202))\n"
              "(assert true)\n"
              "(define-fun .def_1202 () (_ BitVec 65536) (bvmul v v))\n"
              "(assert (! (bvule .def_1202 .def_1202) :named a))\n"
              "(bvule (bvmul v v) (bvmul v v))");
  }
}

}  // namespace
}  // namespace brum
