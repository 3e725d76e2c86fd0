// Times printing to memory: this library in every form, z3 and cvc5 where they are installed, and
// lower bounds. One shape for each run:
//
//     printing_bench --shape=dag --nodes=1000000 --cvc5-nodes=10000 [Google Benchmark's options]
#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

#include "bench/brum_system.h"
#include "bench/memory_use.h"
#include "bench/options.h"
#include "bench/printers.h"
#include "bench/shapes.h"
#include "brum/terms/term_index.h"
#include "brum/terms/term_walk.h"
#ifdef BRUM_BENCH_Z3
#include "bench/z3_system.h"
#endif
#ifdef BRUM_BENCH_CVC5
#include "bench/cvc5_system.h"
#endif

namespace brum::bench {

namespace {

/// A formula in the system that holds it.
template <class System>
struct Subject {
  Subject(Shape shape, std::size_t nodes) : formula(ShapeBuilder(system).build(shape, nodes)) {}

  System system;
  typename System::Term formula;
};

using BrumSubject = std::shared_ptr<Subject<BrumSystem>>;

/// The number of distinct applications in a formula.
std::size_t count_nodes(const Term* formula) {
  TermIndex<char> met;
  std::size_t count = 0;
  const auto enter = [&](const Term* term) {
    const bool is_new = term->symbol->arity != 0 && met[term] == 0;
    if (is_new) {
      met[term] = 1;
      ++count;
    }
    return is_new;
  };
  TermWalk().run(formula, enter, [](const Term*) {});
  return count;
}

/// What is timed: prints once to memory and gives the number of bytes of the text.
using Print = std::function<std::size_t()>;

/// A formula that is built when it is first asked for.
template <class System>
class LateSubject {
 public:
  LateSubject(Shape shape, std::size_t nodes) : shape_(shape), nodes_(nodes) {}

  Subject<System>& get() {
    if (!subject_) {
      subject_ = std::make_unique<Subject<System>>(shape_, nodes_);
    }
    return *subject_;
  }

 private:
  Shape shape_;
  std::size_t nodes_;
  std::unique_ptr<Subject<System>> subject_;
};

/// Registers a benchmark of `print`, for which `prepare` makes ready. Its memory is that of
/// `print_in_child`, done once in a child process, less the text if that is part of it.
void add_benchmark(const std::string& name, std::size_t nodes, const std::function<void()>& prepare,
                   const Print& print, const std::function<void()>& print_in_child,
                   bool text_is_in_memory) {
  auto memory = std::make_shared<std::optional<std::optional<MemoryUse>>>();
  const auto run = [=](benchmark::State& state) {
    prepare();
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto unused : state) {
      bytes = print();
    }
    state.counters["nodes"] = static_cast<double>(nodes);
    state.counters["bytes"] = static_cast<double>(bytes);
    if (!print_in_child) {
      return;
    }
    if (!*memory) {
      *memory = measure_memory(print_in_child);
    }
    if (**memory) {
      const std::size_t text = text_is_in_memory ? bytes : 0;
      const std::size_t peak = (**memory)->peak;
      state.counters["memory"] = static_cast<double>(peak - std::min(peak, text));
    }
  };
  benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->Unit(benchmark::kMillisecond);
}

void add_form(const BrumSubject& subject, const Form& form, const char* logic, std::size_t nodes) {
  const auto print = [=] {
    std::ostringstream out;
    form.print(out, subject->system.manager, subject->formula, logic);
    return out.view().size();
  };
  const auto print_in_child = [=] {
    CountingBuffer buffer;
    std::ostream out(&buffer);
    form.print(out, subject->system.manager, subject->formula, logic);
  };
  add_benchmark(
      std::string("brumlin/") + std::string(form.name), nodes, [] {}, print, print_in_child, false);
}

/// The bounds are for the text of version 2.
void add_bounds(const BrumSubject& subject, const char* logic, std::size_t nodes) {
  std::ostringstream out;
  forms()[1].print(out, subject->system.manager, subject->formula, logic);
  const std::size_t bytes = out.view().size();
  const auto append = [=] { return append_tokens(bytes).size(); };
  const auto write = [=] {
    std::ostringstream stream;
    write_tokens(stream, bytes);
    return stream.view().size();
  };
  add_benchmark(
      "bound/string", nodes, [] {}, append, nullptr, false);
  add_benchmark(
      "bound/ostream", nodes, [] {}, write, nullptr, false);
}

template <class System>
void add_rival(Shape shape, std::size_t nodes, std::size_t counted_nodes) {
  const auto subject = std::make_shared<LateSubject<System>>(shape, nodes);
  const char* const logic = logic_of(shape);
  const auto print = [=] {
    Subject<System>& built = subject->get();
    return built.system.print(built.formula, logic).size();
  };
  add_benchmark(
      std::string(System::name) + "/" + std::to_string(nodes), counted_nodes,
      [=] { subject->get(); }, print, [=] { benchmark::DoNotOptimize(print()); }, true);
}

int run(int argc, char** argv) {
  const std::string name = take_option(&argc, argv, "shape", "dag");
  const std::size_t nodes = take_number(&argc, argv, "nodes", 1000000);
  const std::size_t cvc5_nodes = take_number(&argc, argv, "cvc5-nodes", nodes);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  const auto* const named = std::find_if(shapes.begin(), shapes.end(),
                                         [&](const NamedShape& s) { return s.name == name; });
  if (named == shapes.end()) {
    std::cerr << "printing_bench: no shape " << name << '\n';
    return 2;
  }
  const Shape shape = named->shape;
  const auto subject = std::make_shared<Subject<BrumSystem>>(shape, nodes);
  const std::size_t counted = count_nodes(subject->formula);
  for (const Form& form : forms()) {
    add_form(subject, form, logic_of(shape), counted);
  }
  add_bounds(subject, logic_of(shape), counted);
#ifdef BRUM_BENCH_Z3
  add_rival<Z3System>(shape, nodes, counted);
#endif
#ifdef BRUM_BENCH_CVC5
  const Subject<BrumSystem> same(shape, cvc5_nodes);
  add_rival<Cvc5System>(shape, cvc5_nodes, count_nodes(same.formula));
#endif
  benchmark::RunSpecifiedBenchmarks();
  benchmark::ClearRegisteredBenchmarks();  // and with them the formulas, before cvc5's own end
  return 0;
}

}  // namespace

}  // namespace brum::bench

int main(int argc, char** argv) {
  return brum::bench::run(argc, argv);
}
