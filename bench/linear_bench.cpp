// Times every entry point of the printers on formulas of three sizes, to show that time and memory
// grow as the formula does:
//
//     (ulimit -s 256; linear_bench --shape=dag [Google Benchmark's options])
//
// Beside the forms of printing_bench these are timed:
// - growing-trace: a trace of 1000 assertions, each over a larger part of the formula,
// - many-terms: a script of the same 1000 terms,
// - atom: print_atom, for the tree only, as it writes shared terms again and again.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "bench/brum_system.h"
#include "bench/memory_use.h"
#include "bench/options.h"
#include "bench/printers.h"
#include "bench/shapes.h"
#include "bench/warm_memory.h"
#include "brum/printers/smtlib2_term_printer.h"
#include "brum/terms/term_index.h"
#include "brum/terms/term_walk.h"

namespace brum::bench {

namespace {

constexpr std::array<std::size_t, 3> sizes = {30000, 300000, 3000000};
constexpr std::size_t num_parts = 1000;

/// A formula and larger and larger parts of it, each a Boolean term.
struct Subject {
  Subject(Shape shape, std::size_t nodes)
      : logic(logic_of(shape)), formula(ShapeBuilder(system).build(shape, nodes)) {
    collect_parts(nodes / num_parts);
  }

  void collect_parts(std::size_t step) {
    std::vector<const Term*> terms;
    TermIndex<char> met;
    std::size_t count = 0;
    const auto enter = [&](const Term* term) {
      const bool is_new = term->symbol->arity != 0 && met[term] == 0;
      met[term] = 1;
      return is_new;
    };
    const auto leave = [&](const Term* term) {
      // One behind each even step: on the chain every second term is a conjunction.
      if (++count % step == 1) {
        terms.push_back(term);
      }
    };
    TermWalk().run(formula, enter, leave);
    TermManager& manager = system.manager;
    for (const Term* term : terms) {
      const bool is_formula = term->sort() == manager.get_bool_type();
      parts.push_back(is_formula ? term : manager.make_equal(term, term));
    }
  }

  BrumSystem system;
  const char* logic;
  const Term* formula;
  std::vector<const Term*> parts;
};

using Print = std::function<void(std::ostream& out, Subject& subject)>;

/// Builds the formula of a shape and size when it is asked for, and forgets the one before: they
/// are large.
class LastSubject {
 public:
  explicit LastSubject(Shape shape) : shape_(shape) {}

  Subject& get(std::size_t nodes) {
    if (!subject_ || nodes_ != nodes) {
      subject_.reset();
      subject_ = std::make_unique<Subject>(shape_, nodes);
      nodes_ = nodes;
    }
    return *subject_;
  }

 private:
  Shape shape_;
  std::size_t nodes_ = 0;
  std::unique_ptr<Subject> subject_;
};

void add_entry_point(const std::string& name, const std::shared_ptr<LastSubject>& last,
                     std::size_t nodes, const Print& print) {
  auto memory = std::make_shared<std::optional<std::optional<MemoryUse>>>();
  const auto run = [=](benchmark::State& state) {
    Subject& subject = last->get(nodes);
    std::size_t bytes = 0;
    const auto print_once = [&] {
      CountingBuffer buffer;
      std::ostream out(&buffer);
      print(out, subject);
      bytes = buffer.count();
    };
    warm_memory();
    for ([[maybe_unused]] auto unused : state) {
      print_once();
    }
    if (!*memory) {
      *memory = measure_memory(print_once);
    }
    state.counters["nodes"] = static_cast<double>(nodes);
    state.counters["bytes"] = static_cast<double>(bytes);
    if (**memory) {
      state.counters["memory"] = static_cast<double>((**memory)->peak);
    }
  };
  const std::string full_name = name + "/" + std::to_string(nodes);
  benchmark::RegisterBenchmark(full_name.c_str(), run)
      ->Iterations(1)
      ->Unit(benchmark::kMillisecond);
}

void print_growing_trace(std::ostream& out, Subject& subject) {
  SmtLib2TermPrinter printer(&subject.system.manager, subject.logic, "", true, nullptr);
  for (const Term* part : subject.parts) {
    printer.apitracer_print_term(out, part, "");
  }
}

void print_many_terms(std::ostream& out, Subject& subject) {
  SmtLib2TermPrinter printer(&subject.system.manager, subject.logic, "", true, nullptr);
  printer.print_terms(out, subject.parts);
}

void print_atom(std::ostream& out, Subject& subject) {
  SmtLib2TermPrinter printer(&subject.system.manager, subject.logic, "", true, nullptr);
  printer.print_atom(out, subject.formula);
}

int run(int argc, char** argv) {
  const std::string name = take_option(&argc, argv, "shape", "dag");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  const auto* const named = std::find_if(shapes.begin(), shapes.end(),
                                         [&](const NamedShape& s) { return s.name == name; });
  if (named == shapes.end()) {
    std::cerr << "linear_bench: no shape " << name << '\n';
    return 2;
  }
  const auto last = std::make_shared<LastSubject>(named->shape);
  for (const std::size_t nodes : sizes) {
    for (const Form& form : forms()) {
      const auto print = [&form](std::ostream& out, Subject& subject) {
        form.print(out, subject.system.manager, subject.formula, subject.logic);
      };
      add_entry_point(std::string(form.name), last, nodes, print);
    }
    add_entry_point("growing-trace", last, nodes, print_growing_trace);
    add_entry_point("many-terms", last, nodes, print_many_terms);
    if (named->shape == Shape::tree) {
      add_entry_point("atom", last, nodes, print_atom);
    }
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace

}  // namespace brum::bench

int main(int argc, char** argv) {
  return brum::bench::run(argc, argv);
}
