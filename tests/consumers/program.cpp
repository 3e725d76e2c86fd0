// A program of a user of the library, built by each project of this directory: it prints a
// document, extends a printer and catches what the library throws.

#include <exception>
#include <iostream>
#include <sstream>
#include <string>

#include "brum/brum.h"

namespace {

/// Labels begin with `shared_`.
class NamingPrinter : public brum::SmtLib2TermPrinter {
 public:
  using brum::SmtLib2TermPrinter::SmtLib2TermPrinter;

  void get_define_label(const brum::Term* term, std::string& label) override {
    label = make_label("shared_", term);
  }
};

int failures = 0;

void expect(bool holds, const char* what) {
  if (!holds) {
    std::cerr << "failed: " << what << '\n';
    ++failures;
  }
}

void check_document(brum::TermManager& mgr) {
  const brum::Term* x = mgr.make_term(mgr.declare("x", mgr.get_int_type()));
  const brum::Term* sum = mgr.make_plus(x, x);
  const brum::Term* formula = mgr.make_and(
      mgr.make_leq(sum, mgr.make_number(7)),
      mgr.make_not(mgr.make_equal(sum, mgr.make_number(brum::QNumber::from_string("3")))));
  NamingPrinter printer(&mgr, "QF_LIA", "sat", true, nullptr);
  std::ostringstream out;
  printer.print_formula(out, formula);
  expect(out.str() ==
             "(set-logic QF_LIA)\n"
             "(set-info :status sat)\n"
             "(set-info :source |printed by Brumlin|)\n"
             "(declare-fun x () Int)\n"
             "(define-fun shared_2 () Int (+ x x))\n"
             "(assert (and (<= shared_2 7) (not (= shared_2 3))))\n",
         "the document");

  std::istringstream in(out.str());
  brum::Script script;
  brum::SmtLib2Reader(mgr).read(in, script);
  expect(script.at_end().assertions.size() == 1 && script.at_end().assertions[0] == formula,
         "reading the document gives the formula");
}

void check_errors(brum::TermManager& mgr) {
  bool caught = false;
  try {
    mgr.make_not(mgr.make_number(1));
  } catch (const brum::TermManager::error& problem) {
    caught = std::string(problem.what()).size() > 10;
  }
  expect(caught, "catching the class of an error");

  caught = false;
  try {
    const brum::DataType* row = mgr.make_array_type(mgr.get_int_type(), mgr.get_int_type());
    const brum::Term* table =
        mgr.make_term(mgr.declare("t", mgr.make_array_type(mgr.get_int_type(), row)));
    brum::SmtLibTermPrinter printer(true, &mgr, "", "");
    std::ostringstream out;
    printer.print_formula(out, mgr.make_equal(table, table));
  } catch (const brum::Exception& problem) {
    caught = dynamic_cast<const brum::TermPrinter::error*>(&problem) != nullptr;
  }
  expect(caught, "finding the class of an error");
}

}  // namespace

int main() {
  try {
    brum::TermManager mgr;
    check_document(mgr);
    check_errors(mgr);
  } catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
  }
  return failures == 0 ? 0 : 1;
}
