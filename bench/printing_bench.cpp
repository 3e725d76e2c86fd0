// Times printing to memory: this library in every form, z3 and cvc5 where they are installed, and
// lower bounds. One shape for each run, or all scripts of a folder:
//
//     printing_bench --shape=dag --nodes=1000000 [Google Benchmark's options]
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
#include "bench/worker.h"
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

std::size_t count_nodes(const Subjects<BrumSystem>& subjects) {
  std::size_t count = 0;
  for (const auto& subject : subjects) {
    count += count_nodes(subject->formula);
  }
  return count;
}

/// A process for one system, which makes its formulas there when they are first asked for. What is
/// given to it as work belongs to it and must not own it.
template <class System>
class Host {
 public:
  using Make = std::function<Subjects<System>()>;

  explicit Host(Make make) : make_(std::move(make)) {}

  /// In the process only.
  const Subjects<System>& subjects() {
    if (subjects_.empty()) {
      subjects_ = make_();
    }
    return subjects_;
  }

  Worker worker;

 private:
  Make make_;
  Subjects<System> subjects_;
};

template <class System>
using SharedHost = std::shared_ptr<Host<System>>;

/// Formulas of fewer nodes find the memory they need in the heap, and the caches of the processor
/// had better not be swept for them. They are printed several times in a run, which would else be
/// over before the processor has learnt its branches.
constexpr std::size_t fewest_nodes_of_large = 50000;
constexpr int passes_of_small = 20;

/// What is printed: as many nodes in every system.
class Size {
 public:
  /// About as many as `nodes`; `host` counts them.
  Size(std::size_t nodes, const SharedHost<BrumSystem>& host)
      : is_large_(nodes >= fewest_nodes_of_large), host_(host) {
    Host<BrumSystem>* const place = host.get();
    count_ = host->worker.add({nullptr, [=] { return count_nodes(place->subjects()); }});
  }

  bool is_large() const { return is_large_; }
  int passes() const { return is_large_ ? 1 : passes_of_small; }

  /// 0 when they cannot be counted.
  std::size_t nodes() const {
    if (!nodes_) {
      nodes_ = host_->worker.run(count_);
    }
    return nodes_ ? nodes_->value : 0;
  }

 private:
  bool is_large_;
  SharedHost<BrumSystem> host_;
  std::size_t count_;
  mutable std::optional<Worker::Outcome> nodes_;
};

using SharedSize = std::shared_ptr<const Size>;

/// What is to be measured.
struct Case {
  std::string name;
  std::function<void()> prepare;             // not timed
  std::function<std::size_t()> print;        // prints once to memory and gives the number of bytes
  std::function<void()> print_for_memory{};  // what is to be known of its memory, if anything
  bool is_text_in_memory = false;            // of the latter
};

/// Gives the bytes that printing takes in a process of its own, 0 for unknown.
std::size_t memory_of(const std::function<void()>& print) {
  const std::optional<MemoryUse> use = measure_memory(print);
  return use ? use->peak : 0;
}

/// Registers a benchmark, which `worker` does.
void add_benchmark(const std::shared_ptr<Worker>& worker, const SharedSize& size, Case measured) {
  const int passes = size->passes();
  const auto prepare = [prepare = measured.prepare, is_large = size->is_large()] {
    prepare();
    if (is_large) {
      warm_memory();
    }
  };
  const auto print = [print = measured.print, passes] {
    std::size_t bytes = 0;
    for (int pass = 0; pass < passes; ++pass) {
      bytes = print();
    }
    return bytes;
  };
  const std::size_t timing = worker->add({prepare, print});
  std::optional<std::size_t> memory_use;
  if (measured.print_for_memory) {
    memory_use = worker->add(
        {measured.prepare, [print = measured.print_for_memory] { return memory_of(print); }});
  }
  const auto run = [=, memory = std::optional<Worker::Outcome>(),
                    is_text_in_memory =
                        measured.is_text_in_memory](benchmark::State& state) mutable {
    std::optional<Worker::Outcome> printed;
    for ([[maybe_unused]] auto unused : state) {
      printed = worker->run(timing);
      state.SetIterationTime(printed ? printed->seconds / passes : 0);
    }
    if (memory_use && !memory) {
      memory = worker->run(*memory_use);
    }
    const std::size_t nodes = size->nodes();
    if (!printed || nodes == 0) {
      state.SkipWithError("a process has died");
      return;
    }
    state.counters["nodes"] = static_cast<double>(nodes);
    state.counters["bytes"] = static_cast<double>(printed->value);
    if (memory && memory->value != 0) {
      const std::size_t text = is_text_in_memory ? printed->value : 0;
      state.counters["memory"] = static_cast<double>(memory->value - std::min(memory->value, text));
    }
  };
  benchmark::RegisterBenchmark(measured.name.c_str(), run)
      ->Iterations(1)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

template <class System>
std::shared_ptr<Worker> worker_of(const SharedHost<System>& host) {
  return {host, &host->worker};
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

void add_form(const SharedHost<BrumSystem>& host, const Form& form, const SharedSize& size) {
  Host<BrumSystem>* const place = host.get();
  const auto prepare = [=] { place->subjects(); };
  const auto print = [=] { return print_all<MemorySink>(place->subjects(), form); };
  const auto print_for_memory = [=] {
    benchmark::DoNotOptimize(print_all<CountingSink>(place->subjects(), form));
  };
  add_benchmark(
      worker_of(host), size,
      {std::string("brumlin/") + std::string(form.name), prepare, print, print_for_memory});
}

/// What a std::ostringstream costs in place of this library's own stream.
void add_string_stream(const SharedHost<BrumSystem>& host, const SharedSize& size) {
  Host<BrumSystem>* const place = host.get();
  const auto prepare = [=] { place->subjects(); };
  const auto print = [=] { return print_all<StringSink>(place->subjects(), *form_named("v2")); };
  add_benchmark(worker_of(host), size, {"brumlin/v2 to a std::ostringstream", prepare, print});
}

/// The bounds are for the text of version 2.
void add_bounds(const SharedHost<BrumSystem>& host, const SharedSize& size) {
  Host<BrumSystem>* const place = host.get();
  const auto bytes = std::make_shared<std::size_t>(0);
  const auto prepare = [=] {
    if (*bytes == 0) {
      *bytes = print_all<CountingSink>(place->subjects(), *form_named("v2"));
    }
  };
  const auto append = [=] { return append_tokens(*bytes).size(); };
  const auto write = [=] {
    std::ostringstream stream;
    write_tokens(stream, *bytes);
    return stream.view().size();
  };
  add_benchmark(worker_of(host), size, {"bound/string", prepare, append});
  add_benchmark(worker_of(host), size, {"bound/ostream", prepare, write});
}

/// A lower bound of a trace: only to make the texts that it must keep.
void add_kept_bound(const SharedHost<BrumSystem>& host, const SharedSize& size,
                    std::string_view form, bool define_fun) {
  Host<BrumSystem>* const place = host.get();
  const auto lengths = std::make_shared<std::vector<std::vector<std::size_t>>>();
  const auto prepare = [=] {
    if (lengths->empty()) {
      for (const auto& subject : place->subjects()) {
        lengths->push_back(kept_lengths(subject->system.manager, subject->formula,
                                        subject->logic.c_str(), define_fun));
      }
    }
  };
  const auto keep = [=] {
    std::size_t bytes = 0;
    for (const std::vector<std::size_t>& of_one : *lengths) {
      bytes += keep_texts(of_one);
    }
    return bytes;
  };
  add_benchmark(worker_of(host), size, {"bound/kept by " + std::string(form), prepare, keep});
}

template <class System>
void add_rival(const SharedSize& size, typename Host<System>::Make make) {
  const auto host = std::make_shared<Host<System>>(std::move(make));
  Host<System>* const place = host.get();
  const auto prepare = [=] { place->subjects(); };
  const auto print = [=] {
    std::size_t bytes = 0;
    for (const auto& subject : place->subjects()) {
      bytes += subject->system.print(subject->formula, subject->logic.c_str()).size();
    }
    return bytes;
  };
  const auto print_for_memory = [=] { benchmark::DoNotOptimize(print()); };
  add_benchmark(worker_of(host), size, {System::name, prepare, print, print_for_memory, true});
}

SharedSize add_forms_and_bounds(std::size_t nodes, Host<BrumSystem>::Make make) {
  const auto host = std::make_shared<Host<BrumSystem>>(std::move(make));
  const auto size = std::make_shared<const Size>(nodes, host);
  for (const Form& form : forms()) {
    add_form(host, form, size);
  }
  add_string_stream(host, size);
  add_bounds(host, size);
  add_kept_bound(host, size, "trace", true);
  add_kept_bound(host, size, "let-trace", false);
  return size;
}

void add_shape(Shape shape, std::size_t nodes) {
  [[maybe_unused]] const SharedSize size =
      add_forms_and_bounds(nodes, [=] { return make_shape<BrumSystem>(shape, nodes); });
#ifdef BRUM_BENCH_Z3
  add_rival<Z3System>(size, [=] { return make_shape<Z3System>(shape, nodes); });
#endif
#ifdef BRUM_BENCH_CVC5
  add_rival<Cvc5System>(size, [=] { return make_shape<Cvc5System>(shape, nodes); });
#endif
}

template <class System>
Subjects<System> read_subjects(const std::vector<std::string>& paths) {
  Subjects<System> subjects;
  subjects.reserve(paths.size());
  for (const std::string& path : paths) {
    subjects.push_back(read_subject<System>(path));
  }
  return subjects;
}

/// Reads a script with every reader and writes it in every form. Throws what does not work.
void try_script(const std::string& path) {
  const auto subject = read_subject<BrumSystem>(path);
  CountingSink unheard;
  for (const Form& form : forms()) {
    form.print(unheard.out, subject->system.manager, subject->formula, "ALL");
  }
#ifdef BRUM_BENCH_Z3
  read_subject<Z3System>(path);
#endif
}

/// The scripts of a folder that all readers take, each as the conjunction of its assertions.
/// cvc5's library has no parser that others may call.
void add_folder(const std::string& folder) {
  std::vector<std::string> paths;
  std::size_t all = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".smt2") {
      continue;
    }
    ++all;
    std::string path = entry.path().string();
    if (succeeds_in_child([&] { try_script(path); })) {
      paths.push_back(std::move(path));
    } else {
      std::cerr << "printing_bench: left out: " << path << '\n';
    }
  }
  std::sort(paths.begin(), paths.end());
  std::cerr << "printing_bench: " << paths.size() << " of " << all << " files\n";
  [[maybe_unused]] const SharedSize size =
      add_forms_and_bounds(0, [=] { return read_subjects<BrumSystem>(paths); });
#ifdef BRUM_BENCH_Z3
  add_rival<Z3System>(size, [=] { return read_subjects<Z3System>(paths); });
#endif
}

int run(int argc, char** argv) {
  const std::string folder = take_option(&argc, argv, "folder", "");
  const std::string name = take_option(&argc, argv, "shape", "dag");
  const std::size_t nodes = take_number(&argc, argv, "nodes", 1000000);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  const auto* const named = std::find_if(shapes.begin(), shapes.end(),
                                         [&](const NamedShape& s) { return s.name == name; });
  if (!folder.empty()) {
    add_folder(folder);
  } else if (named != shapes.end()) {
    add_shape(named->shape, nodes);
  } else {
    std::cerr << "printing_bench: no shape " << name << '\n';
    return 2;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::ClearRegisteredBenchmarks();  // and with them the processes
  return 0;
}

}  // namespace

}  // namespace brum::bench

int main(int argc, char** argv) {
  return brum::bench::run(argc, argv);
}
