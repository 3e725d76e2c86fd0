// Times the building of formulas in the store of this library, of z3 and of cvc5. Each iteration
// builds in a new store:
//
//     building_bench --nodes=1000000 [Google Benchmark's options]
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "bench/brum_system.h"
#include "bench/memory_use.h"
#include "bench/options.h"
#include "bench/shapes.h"
#include "bench/warm_memory.h"
#ifdef BRUM_BENCH_Z3
#include "bench/z3_system.h"
#endif
#ifdef BRUM_BENCH_CVC5
#include "bench/cvc5_system.h"
#endif

namespace brum::bench {

namespace {

template <class System>
struct Built {
  Built(Shape shape, std::size_t nodes) : formula(ShapeBuilder(system).build(shape, nodes)) {}

  System system;
  typename System::Term formula;
};

template <class System>
void add_system(const NamedShape& shape, std::size_t nodes) {
  auto memory = std::make_shared<std::optional<std::optional<MemoryUse>>>();
  const auto run = [=](benchmark::State& state) {
    warm_memory();
    for ([[maybe_unused]] auto unused : state) {
      auto built = std::make_unique<Built<System>>(shape.shape, nodes);
      state.PauseTiming();
      built.reset();
      state.ResumeTiming();
    }
    if (!*memory) {
      // What is resident at the end: the arrays in which the builder holds terms are gone.
      *memory = measure_memory([&] {
        const auto* const built = new Built<System>(shape.shape, nodes);  // the process ends
        benchmark::DoNotOptimize(built);
      });
    }
    state.counters["nodes"] = static_cast<double>(nodes);
    if (**memory) {
      state.counters["memory"] = static_cast<double>((**memory)->after);
    }
  };
  const std::string name = std::string(shape.name) + "/" + System::name;
  benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->Unit(benchmark::kMillisecond);
}

int run(int argc, char** argv) {
  const std::size_t nodes = take_number(&argc, argv, "nodes", 1000000);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  for (const NamedShape& shape : shapes) {
    add_system<BrumSystem>(shape, nodes);
#ifdef BRUM_BENCH_Z3
    add_system<Z3System>(shape, nodes);
#endif
#ifdef BRUM_BENCH_CVC5
    add_system<Cvc5System>(shape, nodes);
#endif
  }
  benchmark::RunSpecifiedBenchmarks();
  // Not through the end of the program: cvc5 would need minutes to put away what it still holds.
  std::cout.flush();
  std::_Exit(0);
}

}  // namespace

}  // namespace brum::bench

int main(int argc, char** argv) {
  return brum::bench::run(argc, argv);
}
