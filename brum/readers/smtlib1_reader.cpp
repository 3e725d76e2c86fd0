#include "brum/readers/smtlib1_reader.h"

#include <utility>

#include "brum/readers/smtlib1_benchmark_parser.h"

namespace brum {

SmtLib1Reader::SmtLib1Reader(TermManager& manager, ReaderOptions options)
    : manager_(manager), options_(std::move(options)) {}

void SmtLib1Reader::read(std::istream& in, ScriptHandler& handler) {
  SmtLib1BenchmarkParser(manager_, options_, in, handler).read_benchmark();
}

const Term* SmtLib1Reader::read_term(std::istream& in) {
  ScriptHandler ignore;
  return SmtLib1BenchmarkParser(manager_, options_, in, ignore).read_term();
}

}  // namespace brum
