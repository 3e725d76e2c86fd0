// Times printing to memory: this library in every form, z3 and cvc5 where they are installed, and
// lower bounds. One shape for each run, or all scripts of a folder:
//
//     printing_bench --shape=dag --nodes=1000000 --cvc5-nodes=10000 [Google Benchmark's options]
//     printing_bench --folder=DIR [Google Benchmark's options]
#include <benchmark/benchmark.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/brum_system.h"
#include "bench/memory_use.h"
#include "bench/options.h"
#include "bench/printers.h"
#include "bench/shapes.h"
#include "bench/warm_memory.h"
#include "brum/terms/term_index.h"
#include "brum/terms/term_walk.h"
#include "brum/utils/memory_stream.h"
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
  System system;
  typename System::Term formula;
  std::string logic;
};

/// What is printed one after another: one formula of a shape, or those of files.
template <class System>
using Subjects = std::vector<std::unique_ptr<Subject<System>>>;

template <class System>
Subjects<System> make_shape(Shape shape, std::size_t nodes) {
  Subjects<System> subjects;
  subjects.push_back(std::make_unique<Subject<System>>());
  Subject<System>& subject = *subjects.back();
  subject.formula = ShapeBuilder(subject.system).build(shape, nodes);
  subject.logic = logic_of(shape);
  return subjects;
}

/// Reads the conjunction of the assertions of a file. Throws what the system's reader throws.
template <class System>
std::unique_ptr<Subject<System>> read_subject(const std::string& path) {
  auto subject = std::make_unique<Subject<System>>();
  subject->formula = subject->system.read(path);
  subject->logic = "ALL";
  return subject;
}

using BrumSubjects = std::shared_ptr<Subjects<BrumSystem>>;

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

std::size_t count_nodes(const Subjects<BrumSystem>& subjects) {
  std::size_t count = 0;
  for (const auto& subject : subjects) {
    count += count_nodes(subject->formula);
  }
  return count;
}

/// Formulas that are made when they are first asked for.
template <class System>
class LateSubjects {
 public:
  using Make = std::function<Subjects<System>()>;

  explicit LateSubjects(Make make) : make_(std::move(make)) {}

  Subjects<System>& get() {
    if (subjects_.empty()) {
      subjects_ = make_();
    }
    return subjects_;
  }

 private:
  Make make_;
  Subjects<System> subjects_;
};

/// Formulas of fewer nodes find the memory they need in the heap, and the caches of the processor
/// had better not be swept for them. They are printed several times in a run, which would else be
/// over before the processor has learnt its branches.
constexpr std::size_t fewest_nodes_of_large = 50000;
constexpr int passes_of_small = 20;

/// Registers a benchmark of `print`, for which `prepare` makes ready. Its memory is that of
/// `print_in_child`, done once in a child process, less the text if that is part of it.
void add_benchmark(const std::string& name, std::size_t nodes, const std::function<void()>& prepare,
                   const Print& print, const std::function<void()>& print_in_child,
                   bool text_is_in_memory) {
  const bool is_large = nodes >= fewest_nodes_of_large;
  auto memory = std::make_shared<std::optional<std::optional<MemoryUse>>>();
  const auto run = [=](benchmark::State& state) {
    prepare();
    if (is_large) {
      warm_memory();
    }
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
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->Iterations(is_large ? 1 : passes_of_small)
      ->Unit(benchmark::kMillisecond);
}

/// Prints every formula to a `Sink` of its own and gives the number of bytes.
template <class Sink>
std::size_t print_all(const Subjects<BrumSystem>& subjects, const Form& form) {
  std::size_t bytes = 0;
  for (const auto& subject : subjects) {
    Sink sink;
    form.print(sink.out, subject->system.manager, subject->formula, subject->logic.c_str());
    bytes += sink.size();
  }
  return bytes;
}

struct MemorySink {
  MemoryStream out;
  std::size_t size() const { return out.text().size(); }
};

struct StringSink {
  std::ostringstream out;
  std::size_t size() const { return out.view().size(); }
};

struct CountingSink {
  CountingBuffer buffer;
  std::ostream out{&buffer};
  std::size_t size() const { return buffer.count(); }
};

void add_form(const BrumSubjects& subjects, const Form& form, std::size_t nodes) {
  const auto print = [=] { return print_all<MemorySink>(*subjects, form); };
  const auto print_in_child = [=] {
    benchmark::DoNotOptimize(print_all<CountingSink>(*subjects, form));
  };
  add_benchmark(
      std::string("brumlin/") + std::string(form.name), nodes, [] {}, print, print_in_child, false);
}

/// What a std::ostringstream costs in place of this library's own stream.
void add_string_stream(const BrumSubjects& subjects, std::size_t nodes) {
  const auto print = [=] { return print_all<StringSink>(*subjects, *form_named("v2")); };
  add_benchmark(
      "brumlin/v2 to a std::ostringstream", nodes, [] {}, print, nullptr, false);
}

/// The bounds are for the text of version 2.
void add_bounds(const BrumSubjects& subjects, std::size_t nodes) {
  const std::size_t bytes = print_all<CountingSink>(*subjects, *form_named("v2"));
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
void add_rival(std::size_t nodes, std::size_t counted_nodes,
               typename LateSubjects<System>::Make make) {
  const auto subjects = std::make_shared<LateSubjects<System>>(std::move(make));
  const auto print = [=] {
    std::size_t bytes = 0;
    for (const auto& subject : subjects->get()) {
      bytes += subject->system.print(subject->formula, subject->logic.c_str()).size();
    }
    return bytes;
  };
  add_benchmark(
      std::string(System::name) + "/" + std::to_string(nodes), counted_nodes,
      [=] { subjects->get(); }, print, [=] { benchmark::DoNotOptimize(print()); }, true);
}

void add_forms_and_bounds(Subjects<BrumSystem> subjects, std::size_t counted_nodes) {
  const auto shared = std::make_shared<Subjects<BrumSystem>>(std::move(subjects));
  for (const Form& form : forms()) {
    add_form(shared, form, counted_nodes);
  }
  add_string_stream(shared, counted_nodes);
  add_bounds(shared, counted_nodes);
}

void add_shape(Shape shape, std::size_t nodes, [[maybe_unused]] std::size_t cvc5_nodes) {
  auto subjects = make_shape<BrumSystem>(shape, nodes);
  const std::size_t counted = count_nodes(subjects);
  add_forms_and_bounds(std::move(subjects), counted);
#ifdef BRUM_BENCH_Z3
  add_rival<Z3System>(nodes, counted, [=] { return make_shape<Z3System>(shape, nodes); });
#endif
#ifdef BRUM_BENCH_CVC5
  add_rival<Cvc5System>(cvc5_nodes, count_nodes(make_shape<BrumSystem>(shape, cvc5_nodes)),
                        [=] { return make_shape<Cvc5System>(shape, cvc5_nodes); });
#endif
}

/// The scripts of a folder that both readers take, each as the conjunction of its assertions.
/// cvc5's library has no parser that others may call.
void add_folder(const std::string& folder) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".smt2") {
      paths.push_back(entry.path().string());
    }
  }
  std::sort(paths.begin(), paths.end());
  Subjects<BrumSystem> subjects;
#ifdef BRUM_BENCH_Z3
  const auto rivals = std::make_shared<Subjects<Z3System>>();
#endif
  for (const std::string& path : paths) {
    try {
      auto subject = read_subject<BrumSystem>(path);
      CountingSink unheard;
      for (const Form& form : forms()) {
        form.print(unheard.out, subject->system.manager, subject->formula, "ALL");
      }
#ifdef BRUM_BENCH_Z3
      rivals->push_back(read_subject<Z3System>(path));
#endif
      subjects.push_back(std::move(subject));
    } catch (const std::exception& error) {
      std::cerr << "printing_bench: left out: " << path << ": " << error.what() << '\n';
    }
  }
  std::cerr << "printing_bench: " << subjects.size() << " of " << paths.size() << " files\n";
  const std::size_t counted = count_nodes(subjects);
  add_forms_and_bounds(std::move(subjects), counted);
#ifdef BRUM_BENCH_Z3
  add_rival<Z3System>(counted, counted, [=] { return std::move(*rivals); });
#endif
}

int run(int argc, char** argv) {
  const std::string folder = take_option(&argc, argv, "folder", "");
  const std::string name = take_option(&argc, argv, "shape", "dag");
  const std::size_t nodes = take_number(&argc, argv, "nodes", 1000000);
  const std::size_t cvc5_nodes = take_number(&argc, argv, "cvc5-nodes", nodes);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  const auto* const named = std::find_if(shapes.begin(), shapes.end(),
                                         [&](const NamedShape& s) { return s.name == name; });
  if (!folder.empty()) {
    add_folder(folder);
  } else if (named != shapes.end()) {
    add_shape(named->shape, nodes, cvc5_nodes);
  } else {
    std::cerr << "printing_bench: no shape " << name << '\n';
    return 2;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::ClearRegisteredBenchmarks();  // and with them the formulas, before cvc5's own end
  return 0;
}

}  // namespace

}  // namespace brum::bench

int main(int argc, char** argv) {
  return brum::bench::run(argc, argv);
}
