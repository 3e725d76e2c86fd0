// Times the building of formulas in the store of this library, of z3 and of cvc5, each
// time in a new store and in a process of its own:
//
//     building_bench --nodes=1000000 [Google Benchmark's options]
#include <benchmark/benchmark.h>

#include <memory>
#include <optional>
#include <string>

#include "bench/brum_system.h"
#include "bench/memory_use.h"
#include "bench/options.h"
#include "bench/shapes.h"
#include "bench/warm_memory.h"
#include "bench/worker.h"
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

/// Builds a formula in a system that is not put away: the process ends.
template <class System>
void build(Shape shape, std::size_t nodes) {
  const auto* const built = new Built<System>(shape, nodes);
  benchmark::DoNotOptimize(built);
}

/// Each building is done in a process of its own, whose heap nobody has used.
template <class System>
void add_system(const NamedShape& shape, std::size_t nodes) {
  auto memory = std::make_shared<std::optional<std::optional<MemoryUse>>>();
  const auto run = [=](benchmark::State& state) {
    Worker worker;
    const std::size_t building = worker.add({warm_memory, [=] {
                                               build<System>(shape.shape, nodes);
                                               return nodes;
                                             }});
    std::optional<Worker::Outcome> built;
    for ([[maybe_unused]] auto unused : state) {
      built = worker.run(building);
      state.SetIterationTime(built ? built->seconds : 0);
    }
    if (!built) {
      state.SkipWithError("the process has died");
      return;
    }
    if (!*memory) {
      // What is resident at the end: the arrays in which the builder holds terms are gone.
      *memory = measure_memory([&] { build<System>(shape.shape, nodes); });
    }
    state.counters["nodes"] = static_cast<double>(nodes);
    if (**memory) {
      state.counters["memory"] = static_cast<double>((**memory)->after);
    }
  };
  const std::string name = std::string(shape.name) + "/" + System::name;
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->Iterations(1)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
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
  return 0;
}

}  // namespace

}  // namespace brum::bench

int main(int argc, char** argv) {
  return brum::bench::run(argc, argv);
}
