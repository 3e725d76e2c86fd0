#include "brum/printers/term_printer.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "brum/printers/definition_rule.h"
#include "brum/printers/reference_counts.h"
#include "brum/printers/smtlib2_term_printer.h"
#include "tests/printers/recording_printer.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::make_bool;
using testing::make_int;
using testing::RecordingPrinter;

static_assert(std::is_abstract_v<TermPrinter>);
static_assert(std::has_virtual_destructor_v<TermPrinter>);
static_assert(std::is_base_of_v<Exception, TermPrinter::error>);
static_assert(sizeof(TermPrinter) == 2 * sizeof(void*));  // the virtual table and the manager

#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)
/// The number of a virtual function in its table, counted from 0. In this ABI a pointer to one
/// holds 1 and its offset in bytes.
template <class Function>
std::uintptr_t slot_of(Function function) {
  struct Pointer {
    std::uintptr_t offset;
    std::ptrdiff_t adjustment;
  };
  static_assert(sizeof(Function) == sizeof(Pointer));
  return (std::bit_cast<Pointer>(function).offset - 1) / sizeof(void*);
}

TEST(TermPrinter, HooksStandInTheirOrderAfterTheDestructors) {
  EXPECT_EQ(slot_of(&TermPrinter::print_single_term), 2U);
  EXPECT_EQ(slot_of(&TermPrinter::get_define_label), 3U);
  EXPECT_EQ(slot_of(&TermPrinter::print_term_and_children), 4U);
  EXPECT_EQ(slot_of(&TermPrinter::print_type_declaration), 5U);
  EXPECT_EQ(slot_of(&TermPrinter::print_symbol_declaration), 6U);
  EXPECT_EQ(slot_of(&TermPrinter::print_define_section_start), 7U);
  EXPECT_EQ(slot_of(&TermPrinter::print_define_section_end), 8U);
  EXPECT_EQ(slot_of(&TermPrinter::print_define_start), 9U);
  EXPECT_EQ(slot_of(&TermPrinter::print_define_end), 10U);
  EXPECT_EQ(slot_of(&TermPrinter::print_start), 11U);
  EXPECT_EQ(slot_of(&TermPrinter::print_end), 12U);
  EXPECT_EQ(slot_of(&TermPrinter::print_formula_term), 13U);
}

/// Its one virtual function gets the slot after the last of the library's.
template <class Printer>
class OneMore : public Printer {
 public:
  using Printer::Printer;
  virtual void one_more() {}
};

TEST(TermPrinter, NoPrinterAddsAVirtualFunction) {
  EXPECT_EQ(slot_of(&OneMore<TermPrinter>::one_more), 14U);
  EXPECT_EQ(slot_of(&OneMore<SmtLibTermPrinter>::one_more), 14U);
  EXPECT_EQ(slot_of(&OneMore<SmtLib2TermPrinter>::one_more), 14U);
}
#endif

TEST(TermPrinter, CallsTheHooksOfADocumentInTheirOrder) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* both = mgr.make_and(p, q);
  const Term* formula = mgr.make_or(both, mgr.make_not(both));
  // Declarations follow the order of the sets.
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> types;
  TermPrinter::collect_symbols_and_types(formula, symbols, types);
  EXPECT_EQ(symbols.size(), 5U);
  std::vector<std::string> expected = {"start document", "type document Bool"};
  for (const Symbol* symbol : symbols) {
    expected.push_back(std::string("symbol document ") + symbol->name);
  }
  const char* const rest[] = {
      "section start document",
      "term memory t1 p",
      "term memory t2 q",
      "label t3",
      "define document t3 L3",
      "term document t3 and(p,q)",
      "defined document t3",
      "term memory t4 not(L3)",
      "term memory t5 or(L3,not(L3))",
      "formula document t5 or(L3,not(L3))",
      "section end document",
      "end document",
  };
  expected.insert(expected.end(), std::begin(rest), std::end(rest));

  RecordingPrinter printer(&mgr);
  EXPECT_EQ(printer.print(formula), "<{L3=and(p,q);or(L3,not(L3))}>");
  EXPECT_EQ(printer.calls, expected);
}

TEST(TermPrinter, ASharedSubtermIsHandledOnce) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* formula =
      mgr.make_and(mgr.make_and(not_p, p), mgr.make_and(mgr.make_and(p, not_p), not_p));
  RecordingPrinter printer(&mgr);
  EXPECT_EQ(printer.print(formula), "<{L2=not(p);and(and(L2,p),and(and(p,L2),L2))}>");
  std::map<std::string, int> times;
  for (const std::string& call : printer.calls) {
    if (call.starts_with("term ")) {
      ++times[call.substr(call.find(" t"), 3)];
    }
  }
  EXPECT_EQ(times, (std::map<std::string, int>{
                       {" t1", 1}, {" t2", 1}, {" t3", 1}, {" t4", 1}, {" t5", 1}, {" t6", 1}}));
}

TEST(TermPrinter, DefinitionsAreNeverNested) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* two = mgr.make_plus(x, x);
  const Term* four = mgr.make_plus(two, two);
  const Term* formula = mgr.make_leq(four, four);
  RecordingPrinter printer(&mgr);
  EXPECT_EQ(printer.print(formula), "<{L2=+(x,x);L3=+(L2,L2);<=(L3,L3)}>");
}

TEST(TermPrinter, AVariableReachesTheFormulaAsItsName) {
  TermManager mgr;
  RecordingPrinter printer(&mgr);
  EXPECT_EQ(printer.print(make_bool(mgr, "p")), "<{p}>");
  EXPECT_EQ(printer.calls, (std::vector<std::string>{"start document", "type document Bool",
                                                     "symbol document p", "section start document",
                                                     "term memory t1 p", "formula document t1 p",
                                                     "section end document", "end document"}));
}

TEST(TermPrinter, NothingCarriesOverBetweenDocuments) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* formula = mgr.make_or(not_p, not_p);
  RecordingPrinter printer(&mgr);
  const std::string text = printer.print(formula);
  EXPECT_EQ(text, "<{L2=not(p);or(L2,L2)}>");
  const std::vector<std::string> calls = printer.calls;
  printer.calls.clear();
  EXPECT_EQ(printer.print(formula), text);
  EXPECT_EQ(printer.calls, calls);
}

TEST(TermPrinter, PrintTermGoesThroughTheSlotOfSingleTerms) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  RecordingPrinter printer(&mgr);
  std::ostringstream out;
  printer.document = &out;
  printer.print_term(out, p, false);
  printer.print_term(out, p, true);
  EXPECT_EQ(printer.calls,
            (std::vector<std::string>{"single document t1 false", "single document t1 true"}));
  EXPECT_EQ(out.str(), "singlesingle");
}

/// What a map of definitions holds, by the id of the term.
std::map<std::uint64_t, std::string> content(const DefinitionMap& defs) {
  std::map<std::uint64_t, std::string> texts;
  for (const auto& [term, text] : defs) {
    texts[term->id] = text;
  }
  return texts;
}

TEST(TermPrinter, DefinitionMapHoldsEveryHandledSubterm) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* both = mgr.make_and(p, q);
  const Term* not_both = mgr.make_not(both);
  const Term* formula = mgr.make_or(not_both, mgr.make_iff(both, mgr.make_not(q)));
  RecordingPrinter printer(&mgr);
  std::ostringstream out;
  printer.document = &out;
  DefinitionMap defs;
  EXPECT_EQ(printer.do_print_term(out, formula, defs), "or(not(L3),iff(L3,not(q)))");
  EXPECT_EQ(out.str(), "L3=and(p,q);");
  EXPECT_EQ(content(defs), (std::map<std::uint64_t, std::string>{
                               {1, "p"},
                               {2, "q"},
                               {3, "L3"},
                               {4, "not(L3)"},
                               {5, "not(q)"},
                               {6, "iff(L3,not(q))"},
                               {7, "or(not(L3),iff(L3,not(q)))"},
                           }));
}

TEST(TermPrinter, AConstantHasItsTextWhateverARuleCounts) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  RecordingPrinter printer(&mgr);
  std::ostringstream out;
  printer.document = &out;
  const ReferenceCounts nothing;
  DefinitionMap defs;
  EXPECT_EQ(
      printer.do_print_term(out, mgr.make_and(p, p), defs, DefinitionRule::for_formula(nothing)),
      "and(p,p)");
  EXPECT_EQ(defs.find(p)->second, "p");
}

TEST(TermPrinter, AHandledTermIsNotPrintedAgain) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* formula = mgr.make_or(not_p, not_p);
  RecordingPrinter printer(&mgr);
  std::ostringstream out;
  DefinitionMap defs;
  EXPECT_EQ(printer.do_print_term(out, formula, defs), "or(L2,L2)");
  printer.calls.clear();
  out.str("");
  EXPECT_EQ(printer.do_print_term(out, formula, defs), "or(L2,L2)");
  EXPECT_EQ(printer.do_print_term(out, not_p, defs), "L2");
  EXPECT_EQ(printer.do_print_term(out, p, defs), "p");
  EXPECT_TRUE(printer.calls.empty());
  EXPECT_EQ(out.str(), "");
  // A later term refers to the label; its own text is inline.
  EXPECT_EQ(printer.do_print_term(out, mgr.make_and(formula, not_p), defs), "and(or(L2,L2),L2)");
  EXPECT_EQ(out.str(), "");
}

TEST(TermPrinter, TextOfTheMapIsUsedAsItStands) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  RecordingPrinter printer(&mgr);
  std::ostringstream out;
  DefinitionMap defs;
  defs[not_p] = "given";
  EXPECT_EQ(printer.do_print_term(out, mgr.make_or(not_p, not_p), defs), "or(given,given)");
  EXPECT_EQ(out.str(), "");
  EXPECT_EQ(content(defs),
            (std::map<std::uint64_t, std::string>{{2, "given"}, {3, "or(given,given)"}}));
}

TEST(TermPrinter, SharingIsCountedWithinTheUnhandledPart) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* inner = mgr.make_or(not_p, p);
  const Term* outer = mgr.make_and(inner, not_p);
  RecordingPrinter printer(&mgr);
  std::ostringstream out;
  DefinitionMap defs;
  EXPECT_EQ(printer.do_print_term(out, inner, defs), "or(not(p),p)");
  EXPECT_EQ(printer.do_print_term(out, outer, defs), "and(or(not(p),p),not(p))");
  EXPECT_EQ(out.str(), "");
}

TEST(TermPrinter, AnExceptionLeavesWhatWasHandledInTheMap) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* both = mgr.make_and(p, q);                       // 3
  const Term* not_both = mgr.make_not(both);                   // 4
  const Term* first = mgr.make_or(not_both, mgr.make_not(p));  // 5, 6
  const Term* second = mgr.make_iff(mgr.make_not(q), both);    // 7, 8
  const Term* formula = mgr.make_and(first, second);           // 9
  const struct {
    const Term* fails_at;
    const char* written;
    std::map<std::uint64_t, std::string> handled;
  } rows[] = {
      {p, "", {}},
      {q, "", {{1, "p"}}},
      {both, "L3=", {{1, "p"}, {2, "q"}}},
      {not_both, "L3=and(p,q);", {{1, "p"}, {2, "q"}, {3, "L3"}}},
      {first, "L3=and(p,q);", {{1, "p"}, {2, "q"}, {3, "L3"}, {4, "not(L3)"}, {5, "not(p)"}}},
      {second,
       "L3=and(p,q);",
       {{1, "p"},
        {2, "q"},
        {3, "L3"},
        {4, "not(L3)"},
        {5, "not(p)"},
        {6, "or(not(L3),not(p))"},
        {7, "not(q)"}}},
      {formula,
       "L3=and(p,q);",
       {{1, "p"},
        {2, "q"},
        {3, "L3"},
        {4, "not(L3)"},
        {5, "not(p)"},
        {6, "or(not(L3),not(p))"},
        {7, "not(q)"},
        {8, "iff(not(q),L3)"}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fails_at->id);
    RecordingPrinter printer(&mgr);
    printer.fails_at = row.fails_at;
    std::ostringstream out;
    DefinitionMap defs;
    EXPECT_THROW(printer.do_print_term(out, formula, defs), RecordingPrinter::Failure);
    EXPECT_EQ(out.str(), row.written);
    EXPECT_EQ(content(defs), row.handled);
    // The next try goes on from there.
    printer.fails_at = nullptr;
    out.str("");
    EXPECT_EQ(printer.do_print_term(out, formula, defs), "and(or(not(L3),not(p)),iff(not(q),L3))");
    EXPECT_EQ(out.str(), row.handled.contains(3) ? "" : "L3=and(p,q);");
  }
}

/// Prints another term into the same map when a definition begins.
class NestingPrinter : public RecordingPrinter {
 public:
  using RecordingPrinter::RecordingPrinter;
  const Term* first = nullptr;  // null when it was printed
  DefinitionMap* defs = nullptr;

  void print_define_start(std::ostream& out, const std::string& label, const Term* term) override {
    if (const Term* nested = std::exchange(first, nullptr); nested != nullptr) {
      do_print_term(out, nested, *defs);
    }
    RecordingPrinter::print_define_start(out, label, term);
  }
};

TEST(TermPrinter, ATermThatAHookPrintsIsHandledOnce) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* one = mgr.make_not(p);               // 3
  const Term* two = mgr.make_not(q);               // 4
  const Term* pair = mgr.make_or(two, two);        // 5
  const Term* both = mgr.make_and(one, one);       // 6
  const Term* formula = mgr.make_iff(both, pair);  // 7
  for (const Term* nested : {pair, two, formula}) {
    SCOPED_TRACE(nested->id);
    NestingPrinter printer(&mgr);
    std::ostringstream out;
    printer.document = &out;
    DefinitionMap defs;
    printer.defs = &defs;
    printer.first = nested;
    // Alone it is referred to once only.
    const std::string not_q = nested == two ? "not(q)" : "L4";
    const std::string text = "iff(and(L3,L3),or(" + not_q + "," + not_q + "))";
    EXPECT_EQ(printer.do_print_term(out, formula, defs), text);
    const std::map<std::uint64_t, std::string> expected = {
        {1, "p"},          {2, "q"}, {3, "L3"}, {4, not_q}, {5, "or(" + not_q + "," + not_q + ")"},
        {6, "and(L3,L3)"}, {7, text}};
    EXPECT_EQ(defs.size(), 7U);
    EXPECT_EQ(content(defs), expected);
  }
}

/// Prints another term into the same map while it spells one.
class PeekingPrinter : public RecordingPrinter {
 public:
  using RecordingPrinter::RecordingPrinter;
  const Term* at = nullptr;
  const Term* other = nullptr;
  DefinitionMap* defs = nullptr;
  std::string text_of_other;

  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override {
    if (term == at) {
      std::ostringstream definitions;
      text_of_other = do_print_term(definitions, other, *defs);
    }
    RecordingPrinter::print_term_and_children(out, term, children);
  }
};

TEST(TermPrinter, TheMapHoldsTheTextsOfArgumentsWhileAHookHasThem) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* both = mgr.make_and(p, q);
  const Term* not_both = mgr.make_not(both);
  const Term* formula = mgr.make_iff(not_both, q);
  PeekingPrinter printer(&mgr);
  DefinitionMap defs;
  printer.at = not_both;
  printer.other = mgr.make_or(both, p);
  printer.defs = &defs;
  std::ostringstream out;
  EXPECT_EQ(printer.do_print_term(out, formula, defs), "iff(not(and(p,q)),q)");
  EXPECT_EQ(printer.text_of_other, "or(and(p,q),p)");
  EXPECT_EQ(defs.find(printer.other)->second, "or(and(p,q),p)");
  EXPECT_EQ(defs.find(both)->second, "and(p,q)");
}

TEST(TermPrinter, ADocumentAfterAnExceptionIsWhole) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  const Term* formula = mgr.make_or(not_p, not_p);
  RecordingPrinter printer(&mgr);
  std::ostringstream out;
  printer.fails_at = formula;
  EXPECT_THROW(printer.print_formula(out, formula), RecordingPrinter::Failure);
  EXPECT_EQ(out.str(), "<{L2=not(p);");
  printer.fails_at = nullptr;
  EXPECT_EQ(printer.print(formula), "<{L2=not(p);or(L2,L2)}>");
}

TEST(TermPrinter, TheStateOfTheStreamIsNotLookedAt) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  RecordingPrinter printer(&mgr);
  std::ostringstream out;
  out.setstate(std::ios_base::failbit);
  printer.document = &out;
  printer.print_formula(out, p);
  EXPECT_EQ(printer.calls.size(), 8U);
  EXPECT_EQ(printer.calls.back(), "end document");
}

}  // namespace
}  // namespace brum
