#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "attributes.h"
#include "brum/printers/reference_counts.h"
#include "brum/printers/smtlib_identifiers.h"
#include "brum/printers/symbol_collector.h"
#include "documents.h"
#include "printed_once.h"
#include "printer_choice.h"

namespace brum::tools {

namespace {

/// The terms that the trace asserts, in their order.
std::vector<const Term*> asserted_terms(const Script& script) {
  std::vector<const Term*> terms;
  for (const Command& command : script.commands) {
    if (command.term != nullptr) {
      terms.push_back(command.term);
    }
    if (command.question != nullptr) {
      const Question& question = *command.question;
      terms.insert(terms.end(), question.literals.begin(), question.literals.end());
      terms.insert(terms.end(), question.conditions.begin(), question.conditions.end());
    }
  }
  return terms;
}

bool is_reset(const Command& command) {
  return command.kind == Command::Kind::reset || command.kind == Command::Kind::reset_assertions;
}

bool is_leaving_levels(const Command& command) {
  return command.kind == Command::Kind::pop || command.kind == Command::Kind::check_sat_assuming ||
         is_reset(command);
}

template <class Predicate>
bool any_command(const Script& script, Predicate predicate) {
  for (const Command& command : script.commands) {
    if (predicate(command)) {
      return true;
    }
  }
  return false;
}

/// Writes the commands of a trace. Asserts through the printer, whose definitions stay in force:
/// the script says `:global-declarations true` when it leaves assertion levels.
///
/// A reset of the assertions is written as the end of a level that holds everything, because
/// solvers differ in what a reset command keeps.
template <class Printer>
class TraceWriter {
 public:
  TraceWriter(const DocumentSource& source, Printer& printer, FreeNames& names, std::ostream& out)
      : source_(source),
        printer_(printer),
        names_(names),
        out_(out),
        stated_status_(source.script.status),
        has_resets_(any_command(source.script, is_reset)) {}

  void write() {
    if (has_resets_) {
      out_ << "(push 1)\n";
    }
    for (const Command& command : source_.script.commands) {
      write(command);
    }
  }

 private:
  void write(const Command& command) {
    switch (command.kind) {
      case Command::Kind::assertion:
        printer_.apitracer_print_term(out_, command.term,
                                      attribute_of_name(std::string(command.name)));
        break;
      case Command::Kind::push:
        levels_ += command.levels;
        out_ << "(push " << command.levels << ")\n";
        break;
      case Command::Kind::pop:
        levels_ -= command.levels;
        out_ << "(pop " << command.levels << ")\n";
        break;
      case Command::Kind::check_sat:
        state_status(command.question->status);
        out_ << "(check-sat)\n";
        break;
      case Command::Kind::check_sat_assuming:
        write_check_assuming(*command.question);
        break;
      case Command::Kind::reset:
      case Command::Kind::reset_assertions:
        out_ << "(pop " << levels_ + 1 << ")\n(push 1)\n";
        levels_ = 0;
        break;
    }
  }

  /// The literals hold for one answer: they are asserted on a level of their own.
  void write_check_assuming(const Question& question) {
    out_ << "(push 1)\n";
    for (const Term* literal : question.literals) {
      printer_.apitracer_print_term(out_, literal, "");
    }
    for (const Term* condition : question.conditions) {
      printer_.apitracer_print_term(out_, condition, "");
    }
    state_status(question.status);
    out_ << "(check-sat)\n(pop 1)\n";
  }

  /// A solver may hold its answer against the status that it was told last.
  void state_status(std::string_view of_input) {
    if (source_.line.status || of_input == stated_status_) {
      return;
    }
    stated_status_ = of_input;
    const std::string status = source_.status(stated_status_);
    out_ << "(set-info :status " << (status.empty() ? "unknown" : status) << ")\n";
  }

  std::string attribute_of_name(const std::string& name) {
    if (name.empty()) {
      return "";
    }
    if (!names_.take(name)) {
      source_.diagnostics.warn("the name " + v2_symbol(name) +
                               " of an assertion is left out: it is given twice or declared");
      return "";
    }
    return ":named " + v2_symbol(name);
  }

  const DocumentSource& source_;
  Printer& printer_;
  FreeNames& names_;
  std::ostream& out_;
  std::string stated_status_;  // as the input gives it
  bool has_resets_;
  std::size_t levels_ = 0;
};

}  // namespace

void write_trace(const DocumentSource& source, std::ostream& out) {
  const Script& script = source.script;
  const std::vector<const Term*> terms = asserted_terms(script);
  require_writable_names(source, terms);
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> sorts;
  SymbolCollector collector(symbols, sorts);
  ReferenceCounts counts;
  for (const Term* term : terms) {
    collector.add_term(term);
    counts.add_reference(term);
  }
  FreeNames names(symbols);
  AnnotationMap attributes;
  // Assertions come first to their names: those are what unsatisfiable cores are made of.
  FreeNames reserved(symbols);
  for (const Command& command : script.commands) {
    if (!command.name.empty()) {
      reserved.take(std::string(command.name));
    }
  }
  if (script.annotations.size() != 0) {
    const PrintedOnce printed_once(terms);
    keep_attributes(script, std::cref(printed_once), reserved, source.diagnostics, attributes);
  }

  const auto print = [&](auto& printer) {
    if (any_command(script, is_leaving_levels)) {
      out << "(set-option :global-declarations true)\n";
    }
    printer.print_start(out);
    for (const DataType* sort : sorts) {
      printer.print_type_declaration(out, sort);
    }
    for (const Symbol* symbol : symbols) {
      printer.print_symbol_declaration(out, symbol);
    }
    TraceWriter(source, printer, names, out).write();
    source.statistics.definitions = printer.definitions();
  };
  with_printer<SmtLib2TermPrinter>(source.line.label, print, &source.manager, source.logic(),
                                   source.status(script.status), true, &attributes);
  source.statistics.assertions = terms.size();
  source.statistics.terms = counts.num_terms();
}

}  // namespace brum::tools
