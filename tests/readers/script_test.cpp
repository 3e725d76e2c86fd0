#include "brum/readers/script.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/readers/reading.h"

namespace brum::testing {

namespace {

using Kind = Command::Kind;

const char* const incremental = R"((set-logic QF_UF)
(set-info :status sat)
(declare-const p Bool) (declare-const q Bool) (declare-const r Bool)
(assert (! p :named first))
(check-sat)
(push 2)
(assert q)
(set-info :status unsat)
(check-sat-assuming ((not p) r))
(pop 1)
(check-sat)
(pop 1)
(assert r)
(exit)
(assert q)
)";

std::vector<std::string> texts(TermManager& mgr, const std::vector<const Term*>& terms) {
  std::vector<std::string> result;
  for (const Term* term : terms) {
    result.push_back(text_of(mgr, term));
  }
  return result;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(Script, KeepsCommandsInOrder) {
  TermManager mgr;
  Script script;
  read_into(script, mgr, incremental);
  std::vector<Kind> kinds;
  std::vector<std::size_t> lines;
  for (const Command& command : script.commands) {
    kinds.push_back(command.kind);
    lines.push_back(command.position.line);
  }
  EXPECT_EQ(kinds, (std::vector<Kind>{Kind::assertion, Kind::check_sat, Kind::push, Kind::assertion,
                                      Kind::check_sat_assuming, Kind::pop, Kind::check_sat,
                                      Kind::pop, Kind::assertion}));
  EXPECT_EQ(lines, (std::vector<std::size_t>{4, 5, 6, 7, 9, 10, 11, 12, 13}));
  EXPECT_EQ(script.commands[0].name, "first");
  EXPECT_EQ(script.commands[2].levels, 2U);
  EXPECT_EQ(script.logic, "QF_UF");
  EXPECT_EQ(script.output_logic(), "QF_UF");
  EXPECT_EQ(script.status, "sat");
}

TEST(Script, KeepsWhatItsCommandsReferTo) {
  TermManager mgr;
  Script script;
  const std::string name(100, 'n');
  read_into(
      script, mgr,
      "(set-info :status sat)(declare-const p Bool)(declare-const q Bool)(assert (! p :named " +
          name + "))(check-sat)(set-info :status unsat)(check-sat-assuming (q (not p)))");
  ASSERT_EQ(script.commands.size(), 3U);
  EXPECT_EQ(script.commands[0].name, name);
  EXPECT_EQ(script.commands[0].question, nullptr);
  const Question* first = script.commands[1].question;
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->status, "sat");
  EXPECT_TRUE(first->literals.empty());
  EXPECT_TRUE(first->conditions.empty());
  const Question* second = script.commands[2].question;
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->status, "unsat");
  ASSERT_EQ(second->literals.size(), 2U);
  EXPECT_EQ(text_of(mgr, second->literals[0]), "q");
  EXPECT_EQ(text_of(mgr, second->literals[1]), "(not p)");
  EXPECT_TRUE(second->conditions.empty());
}

TEST(Script, TellsWhatIsInForceAtEachQuery) {
  TermManager mgr;
  Script script;
  read_into(script, mgr, incremental);
  ASSERT_EQ(script.num_queries(), 3U);

  const Query first = script.query(1);
  EXPECT_EQ(texts(mgr, first.assertions), Texts{"p"});
  EXPECT_EQ(first.names, std::vector<std::string_view>{"first"});
  EXPECT_EQ(first.status, "sat");
  EXPECT_EQ(first.position, (TextPosition{5, 1}));
  EXPECT_TRUE(first.assumptions.empty());

  const Query second = script.query(2);
  EXPECT_EQ(texts(mgr, second.assertions), (Texts{"p", "q"}));
  EXPECT_EQ(second.names, (std::vector<std::string_view>{"first", ""}));
  EXPECT_EQ(texts(mgr, second.assumptions), (Texts{"(not p)", "r"}));
  EXPECT_EQ(second.status, "unsat");

  EXPECT_EQ(texts(mgr, script.query(3).assertions), Texts{"p"});
  EXPECT_EQ(texts(mgr, script.at_end().assertions), (Texts{"p", "r"}));
}

TEST(Script, RefusesQueriesThatAreNotThere) {
  TermManager mgr;
  Script script;
  read_into(script, mgr, incremental);
  for (const auto& [number, message] : std::vector<std::pair<std::size_t, std::string>>{
           {4, "found 3 check-sat commands, expected number 4"},
           {0, "found 3 check-sat commands, expected number 0"}}) {
    try {
      script.query(number);
      FAIL() << "no error";
    } catch (const Exception& error) {
      EXPECT_EQ(error.what(), message);
    }
  }
}

TEST(Script, KeepsTheStatusOfAFileWithoutQueries) {
  TermManager mgr;
  Script script;
  read_into(script, mgr, "(set-info :status unsat)(set-info :status unknown)");
  EXPECT_EQ(script.status, "unknown");
  EXPECT_EQ(script.at_end().status, "unknown");
}

TEST(Script, ResetsEndWhatIsInForce) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(set-logic QF_LRA)(declare-const p Bool)(assert p)(push 1)(check-sat)"
            "(reset-assertions)(declare-const p Bool)(check-sat)(assert p)(check-sat)"
            "(reset)(set-logic QF_BV)(declare-const p (_ BitVec 1))(assert (= p #b0))(check-sat)");
  ASSERT_EQ(script.num_queries(), 4U);
  EXPECT_EQ(script.query(1).assertions.size(), 1U);
  EXPECT_EQ(script.query(2).assertions.size(), 0U);
  EXPECT_EQ(script.query(3).assertions.size(), 1U);
  EXPECT_EQ(script.query(4).assertions.size(), 1U);
  EXPECT_EQ(script.logic, "QF_LRA");
  EXPECT_EQ(script.output_logic(), "QF_BVLRA") << "what both parts need";
}

TEST(Script, KeepsAttributesOfInnerTerms) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(declare-const p Bool)(declare-const q Bool)"
            "(assert (! (or (! p :named |an inner one| :weight 2 :flag) q)"
            " :named whole :pattern ((f x) \"s\")))");
  ASSERT_EQ(script.commands.size(), 1U);
  const Term* whole = script.commands[0].term;
  EXPECT_EQ(script.commands[0].name, "whole");
  ASSERT_EQ(script.annotations.size(), 2U);
  using Attributes = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(script.annotations[whole->children[0]],
            (Attributes{{"named", "|an inner one|"}, {"weight", "2"}, {"flag", ""}}));
  EXPECT_EQ(script.annotations[whole], (Attributes{{"pattern", "((f x) \"s\")"}}));
}

TEST(Script, PutsNamesOfTermsIntoTheSignature) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(declare-const i Int)(assert (! (= (! (+ i 1) :named .def_3) 2) :named n))"
            "(assert (not n))(assert (= .def_3 4))");
  ASSERT_NE(mgr.get_signature()->get_symbol("n"), nullptr);
  EXPECT_EQ(mgr.get_signature()->get_symbol("n")->type, mgr.get_bool_type());
  ASSERT_NE(mgr.get_signature()->get_symbol(".def_3"), nullptr);
  EXPECT_EQ(mgr.get_signature()->get_symbol(".def_3")->type, mgr.get_int_type());
  ASSERT_EQ(script.commands.size(), 3U);
  EXPECT_EQ(text_of(mgr, script.commands[1].term), "(not (= (+ i 1) 2))")
      << "the name stands for the term";
  EXPECT_EQ(text_of(mgr, script.commands[2].term), "(= (+ i 1) 4)");
}

TEST(Script, KeepsInfoAndOptionsAsText) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(set-info :source |two\nlines|)(set-info :nothing)(set-option :x (a ( b  c ) \"d\"))");
  using Attributes = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(script.info, (Attributes{{"source", "|two\nlines|"}, {"nothing", ""}}));
  EXPECT_EQ(script.options, (Attributes{{"x", "(a (b c) \"d\")"}}));
}

TEST(Script, NeedsNothingKeptWhenAHandlerIsToldInstead) {
  class Counter : public ScriptHandler {
   public:
    void on_command(const Command& command) override { kinds.push_back(command.kind); }
    void on_symbol(const std::string& name, const Symbol* symbol) override {
      EXPECT_EQ(name, symbol->name);
      ++symbols;
    }
    void on_end(const LogicFeatures&) override { has_ended = true; }
    std::vector<Kind> kinds;
    int symbols = 0;
    bool has_ended = false;
  };
  TermManager mgr;
  Counter counter;
  std::istringstream in("(declare-const p Bool)(assert p)(check-sat)");
  SmtLib2Reader(mgr).read(in, counter);
  EXPECT_EQ(counter.kinds, (std::vector<Kind>{Kind::assertion, Kind::check_sat}));
  EXPECT_EQ(counter.symbols, 1);
  EXPECT_TRUE(counter.has_ended);
}

TEST(Script, AHandlerNeedsToListenToNothing) {
  TermManager mgr;
  ScriptHandler deaf;
  std::istringstream in(
      "(set-logic QF_UFNRA)(set-info :source |x|)(set-option :print-success false)"
      "(declare-sort U 0)(declare-const x Real)(declare-const y Real)"
      "(assert (! (= (! (/ x y) :weight 3) x) :named n))(check-sat)");
  SmtLib2Reader(mgr).read(in, deaf);
  EXPECT_NE(mgr.get_signature()->get_symbol("brum.quotient.2"), nullptr);
  EXPECT_NE(mgr.get_signature()->get_symbol("n"), nullptr);
}

TEST(Script, ReadsSingleTermsOverTheSignature) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const Symbol* f = mgr.declare("f", mgr.make_function_type({integer}, integer));
  const Term* x = mgr.make_term(mgr.declare("a b", integer));
  const Term* sum = mgr.make_plus(mgr.make_term(f, {x}), mgr.make_number(QNumber(-3)));
  const std::size_t terms = mgr.num_terms();
  ReaderOptions options;
  options.use_signature = true;
  std::istringstream in("(+ (f |a b|) (- 3))");
  EXPECT_EQ(SmtLib2Reader(mgr, options).read_term(in), sum);
  EXPECT_EQ(mgr.num_terms(), terms);
  std::istringstream two("|a b| |a b|");
  try {
    SmtLib2Reader(mgr, options).read_term(two);
    FAIL() << "no error";
  } catch (const ReadError& error) {
    EXPECT_STREQ(error.what(),
                 "input:1:7: error: found the symbol |a b|, expected the end of the input");
  }
}

TEST(Script, TermsMayNotNameTheManagersSymbolsUnlessToldSo) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  mgr.declare("f", mgr.make_function_type({integer}, integer));
  mgr.declare("x", integer);
  for (const char* const text : {"x", "(f 3)"}) {
    std::istringstream in(text);
    EXPECT_THROW(SmtLib2Reader(mgr).read_term(in), ReadError) << text;
  }
}

}  // namespace brum::testing
