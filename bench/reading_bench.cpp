// Times reading of script files: this library's reader and z3's parser, through its C interface.
// Each iteration reads the file into a new store:
//
//     reading_bench --megabytes=24 [Google Benchmark's options]
#include <benchmark/benchmark.h>

#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/memory_use.h"
#include "bench/options.h"
#include "bench/script_files.h"
#include "bench/warm_memory.h"
#include "brum/readers/script.h"
#include "brum/readers/smtlib2_reader.h"
#include "brum/terms/term_manager.h"
#ifdef BRUM_BENCH_Z3
#include "bench/z3_system.h"
#endif

namespace brum::bench {

namespace {

/// What holds what was read, so that the time of destruction does not count as reading.
using Holder = std::shared_ptr<void>;
using Read = std::function<Holder(const std::string& path)>;

struct BrumText {
  TermManager manager;
  Script script;
};

Holder read_with_brumlin(const std::string& path) {
  auto text = std::make_shared<BrumText>();
  std::ifstream in(path, std::ios_base::binary);
  SmtLib2Reader(text->manager).read(in, text->script);
  if (text->script.at_end().assertions.empty()) {
    throw std::runtime_error("nothing was read");
  }
  return text;
}

#ifdef BRUM_BENCH_Z3
Holder read_with_z3(const std::string& path) {
  auto system = std::make_shared<Z3System>();
  system->read(path);
  return system;
}
#endif

void add_reader(const std::string& name, const std::shared_ptr<ScriptFile>& file,
                const Read& read) {
  auto memory = std::make_shared<std::optional<std::optional<MemoryUse>>>();
  const auto run = [=](benchmark::State& state) {
    const std::string path = file->path();
    warm_memory();
    for ([[maybe_unused]] auto unused : state) {
      Holder text = read(path);
      state.PauseTiming();
      text.reset();
      state.ResumeTiming();
    }
    if (!*memory) {
      *memory = measure_memory([&] { benchmark::DoNotOptimize(read(path)); });
    }
    state.counters["bytes"] = static_cast<double>(file->size());
    if (**memory) {
      state.counters["memory"] = static_cast<double>((**memory)->peak);
    }
  };
  benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->Unit(benchmark::kMillisecond);
}

int run(int argc, char** argv) {
  const std::size_t megabytes = take_number(&argc, argv, "megabytes", 24);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  for (const NamedKind& kind : script_kinds) {
    const auto file = std::make_shared<ScriptFile>(kind, megabytes * 1000000);
    const std::string name(kind.name);
    add_reader(name + "/brumlin", file, read_with_brumlin);
#ifdef BRUM_BENCH_Z3
    add_reader(name + "/z3", file, read_with_z3);
#endif
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::ClearRegisteredBenchmarks();  // and with them the files
  return 0;
}

}  // namespace

}  // namespace brum::bench

int main(int argc, char** argv) {
  return brum::bench::run(argc, argv);
}
