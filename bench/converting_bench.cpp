// Times the conversion of script files from end to end, each in a process of its own: this
// project's command, z3's parser and benchmark printer through its C interface, and the command
// cvc5, which has a mode that writes what it reads:
//
//     converting_bench --brumlin=build/bench/brumlin --cvc5=cvc5 --megabytes=24
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/options.h"
#include "bench/script_files.h"
#include "bench/warm_memory.h"
#ifdef BRUM_BENCH_Z3
#include "bench/z3_system.h"
#endif

namespace brum::bench {

namespace {

/// Done in a child process; gives its status.
using Work = std::function<int(const std::string& in, const std::string& out)>;

struct Cost {
  double seconds;  // of a processor, the system's work for the process included
  double peak_bytes;
};

double seconds_of(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Gives nothing when the child fails.
std::optional<Cost> run_in_child(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    int status = 1;
    try {
      status = work();
    } catch (const std::exception& failure) {
      std::fputs(failure.what(), stderr);
    }
    _exit(status);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
      WEXITSTATUS(status) != 0) {
    return std::nullopt;
  }
  return Cost{seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime),
              static_cast<double>(usage.ru_maxrss) * 1024};
}

/// Replaces the process by a program; with `out` its standard output goes to that file.
int execute(std::vector<std::string> words, const std::string& out) {
  if (!out.empty()) {
    const int file = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0 || dup2(file, STDOUT_FILENO) < 0) {
      return 1;
    }
  }
  std::vector<char*> arguments;
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  std::perror(arguments[0]);
  return 1;
}

#ifdef BRUM_BENCH_Z3
int convert_with_z3(const std::string& in, const std::string& out) {
  Z3System system;
  const Z3_ast formula = system.read(in);
  std::ofstream file(out, std::ios_base::binary);
  file << system.print(formula, "ALL") << std::flush;
  return file.good() ? 0 : 1;
}
#endif

void add_converter(const std::string& name, const std::shared_ptr<ScriptFile>& file,
                   const Work& work) {
  const auto run = [=](benchmark::State& state) {
    const std::string out = file->path().string() + ".out";
    std::optional<Cost> cost;
    warm_memory();
    for ([[maybe_unused]] auto unused : state) {
      cost = run_in_child([&] { return work(file->path(), out); });
      if (!cost) {
        state.SkipWithError("the conversion failed");
        break;
      }
      state.SetIterationTime(cost->seconds);
    }
    std::error_code none;
    const auto written = std::filesystem::file_size(out, none);
    std::filesystem::remove(out, none);
    if (cost) {
      state.counters["bytes"] = static_cast<double>(file->size());
      state.counters["written"] = static_cast<double>(written);
      state.counters["memory"] = cost->peak_bytes;
    }
  };
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->Iterations(1)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

int run(int argc, char** argv) {
  const std::size_t megabytes = take_number(&argc, argv, "megabytes", 24);
  const std::string brumlin = take_option(&argc, argv, "brumlin", "brumlin");
  const std::string cvc5 = take_option(&argc, argv, "cvc5", "");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  for (const NamedKind& kind : script_kinds) {
    const auto file = std::make_shared<ScriptFile>(kind, megabytes * 1000000);
    const std::string name(kind.name);
    add_converter(name + "/brumlin", file, [=](const std::string& in, const std::string& out) {
      return execute({brumlin, in, "--to", "v2", "-o", out}, "");
    });
#ifdef BRUM_BENCH_Z3
    add_converter(name + "/z3", file, convert_with_z3);
#endif
    if (!cvc5.empty()) {
      add_converter(name + "/cvc5", file, [=](const std::string& in, const std::string& out) {
        return execute({cvc5, "-o", "raw-benchmark", in}, out);
      });
      // This way it forgets each command once it is written.
      add_converter(name + "/cvc5 --parse-only", file,
                    [=](const std::string& in, const std::string& out) {
                      return execute({cvc5, "--parse-only", "-o", "raw-benchmark", in}, out);
                    });
    }
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
