// Builds one small formula and prints it once, for counting instructions under callgrind:
//
//     valgrind --tool=callgrind --toggle-collect="brum::bench::counted_work*"
//         instructions_bench --shape=dag --nodes=2000 --form=v2
//
// With --form=build the building is counted instead, with --form=read the reading of the text of
// version 2. Writes the bytes of the text to standard output, and with --text=FILE the text to a
// file.
#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

#include "bench/brum_system.h"
#include "bench/options.h"
#include "bench/printers.h"
#include "bench/shapes.h"
#include "brum/readers/script.h"
#include "brum/readers/smtlib2_reader.h"
#include "brum/utils/memory_stream.h"

namespace brum::bench {

// Not inlined, so that callgrind finds them by name.
[[gnu::noinline]] void counted_work(const Form& form, std::ostream& out, TermManager& manager,
                                    const Term* formula, const char* logic) {
  form.print(out, manager, formula, logic);
}

[[gnu::noinline]] const Term* counted_work(BrumSystem& system, Shape shape, std::size_t nodes) {
  return ShapeBuilder(system).build(shape, nodes);
}

[[gnu::noinline]] void counted_work(TermManager& manager, std::istream& in, Script& script) {
  SmtLib2Reader(manager).read(in, script);
}

namespace {

/// Reads the text of `formula` into a store of its own.
void read_text(BrumSystem& system, const Term* formula, const char* logic) {
  std::stringstream text;
  form_named("v2")->print(text, system.manager, formula, logic);
  TermManager manager;
  Script script;
  counted_work(manager, text, script);
  std::cout << manager.num_terms() << '\n';
}

int run(int argc, char** argv) {
  const std::string shape_name = take_option(&argc, argv, "shape", "dag");
  const std::string form_name = take_option(&argc, argv, "form", "v2");
  const std::string file = take_option(&argc, argv, "text", "");
  const std::size_t nodes = take_number(&argc, argv, "nodes", 2000);
  const auto* const shape =
      std::find_if(shapes.begin(), shapes.end(),
                   [&](const NamedShape& entry) { return entry.name == shape_name; });
  if (shape == shapes.end() || argc > 1) {
    std::cerr << "instructions_bench: bad shape or option\n";
    return 2;
  }
  BrumSystem system;
  if (form_name == "build") {
    counted_work(system, shape->shape, nodes);
    std::cout << system.manager.num_terms() << '\n';
    return 0;
  }
  const Term* formula = ShapeBuilder(system).build(shape->shape, nodes);
  if (form_name == "read") {
    read_text(system, formula, logic_of(shape->shape));
    return 0;
  }
  const Form* form = form_named(form_name);
  if (form == nullptr) {
    std::cerr << "instructions_bench: no form " << form_name << '\n';
    return 2;
  }
  MemoryStream out;
  counted_work(*form, out, system.manager, formula, logic_of(shape->shape));
  std::cout << out.text().size() << '\n';
  if (!file.empty()) {
    std::ofstream(file, std::ios::binary) << out.text();
  }
  return 0;
}

}  // namespace

}  // namespace brum::bench

int main(int argc, char** argv) {
  try {
    return brum::bench::run(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "instructions_bench: " << failure.what() << '\n';
    return 1;
  }
}
