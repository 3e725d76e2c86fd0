#include "brum/readers/smtlib2_reader.h"

#include <utility>

#include "brum/readers/smtlib2_command_parser.h"

namespace brum {

SmtLib2Reader::SmtLib2Reader(TermManager& manager, ReaderOptions options)
    : manager_(manager), options_(std::move(options)) {}

void SmtLib2Reader::read(std::istream& in, ScriptHandler& handler) {
  SmtLib2CommandParser(manager_, options_, in, handler).read_script();
}

const Term* SmtLib2Reader::read_term(std::istream& in) {
  ScriptHandler ignore;
  return SmtLib2CommandParser(manager_, options_, in, ignore).read_term();
}

}  // namespace brum
