#include "documents.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "attributes.h"
#include "brum/printers/check_names.h"
#include "brum/printers/dot_term_printer.h"
#include "brum/printers/reference_counts.h"
#include "brum/printers/smtlib_identifiers.h"
#include "conjunction.h"
#include "printer_choice.h"

namespace brum::tools {

namespace {

/// What a form of one formula says, or what the form of several names.
struct Content {
  std::vector<const Term*> terms;
  std::string status;
  bool has_query = false;
  std::size_t assertions = 0;  // of the input, however many terms they are
};

std::size_t query_number(const DocumentSource& source) {
  const std::size_t number = source.line.query.value_or(1);
  const std::size_t count = source.script.num_queries();
  if (source.line.query && number > count) {
    throw NoSuchQuery("the input has " + std::to_string(count) + " check-sat, not " +
                      std::to_string(number));
  }
  if (!source.line.query && count > 1) {
    source.diagnostics.warn("the input has " + std::to_string(count) +
                            " check-sat, only what is in force at the first is written (--query N "
                            "takes another)");
  }
  return number;
}

/// Every symbol that terms of the input may hold, operators and numerals aside.
std::vector<const Symbol*> all_symbols(const Script& script) {
  std::vector<const Symbol*> symbols;
  for (const auto& [name, symbol] : script.symbols) {
    symbols.push_back(symbol);
  }
  for (const IntroducedSymbol& introduced : script.introduced) {
    symbols.push_back(introduced.symbol);
  }
  return symbols;
}

/// What is in force at the query that the user chose.
Content content_in_force(const DocumentSource& source) {
  const Script& script = source.script;
  const std::size_t number = query_number(source);
  Query query = script.num_queries() == 0 ? script.at_end() : script.query(number);
  Content content{std::move(query.assertions), std::move(query.status), script.num_queries() > 0};
  content.terms.insert(content.terms.end(), query.assumptions.begin(), query.assumptions.end());
  content.assertions = content.terms.size();
  return content;
}

/// Every assertion of the input, each once.
Content all_assertions(const DocumentSource& source) {
  Content content{{}, source.script.status, source.script.num_queries() > 0};
  hsh::HashSet<const Term*> known;
  for (const Command& command : source.script.commands) {
    if (command.kind != Command::Kind::assertion) {
      continue;
    }
    ++content.assertions;
    if (known.insert(command.term).second) {
      content.terms.push_back(command.term);
    }
  }
  return content;
}

void end_with_query(std::ostream& out, bool has_query) {
  if (has_query) {
    out << "(check-sat)\n";
  }
}

void warn_of_lost_attributes(const DocumentSource& source) {
  if (source.script.annotations.size() != 0) {
    source.diagnostics.warn("attributes of terms are left out: the form has no place for them");
  }
}

void write_plain(const DocumentSource& source, std::ostream& out) {
  const bool v1_format = source.line.form == Form::v1;
  const Content content = content_in_force(source);
  require_writable_names(source, content.terms);
  warn_of_lost_attributes(source);
  const Term* formula = conjunction(source.manager, content.terms);
  const auto print = [&](auto& printer) {
    printer.print_formula(out, formula);
    source.statistics.definitions = printer.definitions();
  };
  with_printer<SmtLibTermPrinter>(source.line.label, print, v1_format, &source.manager,
                                  source.logic(), source.status(content.status));
  end_with_query(out, content.has_query && !v1_format);
  if (source.line.stats != StatsFormat::none) {
    ReferenceCounts counts;
    counts.add_term(formula);
    source.statistics.assertions = content.assertions;
    source.statistics.terms = counts.num_terms();
  }
}

void write_drawing(const DocumentSource& source, std::ostream& out) {
  const Content content = content_in_force(source);
  const Term* formula = conjunction(source.manager, content.terms);
  ReferenceCounts counts;
  counts.add_term(formula);
  const std::size_t most = source.line.most_nodes;
  if (counts.num_terms() > most) {
    source.diagnostics.warn("the graph has " + std::to_string(counts.num_terms()) +
                            " terms, only the " + std::to_string(most) +
                            " nearest to the formula are drawn (--nodes N draws more)");
  }
  CountingPrinter<DotTermPrinter> printer(&source.manager);
  printer.print_graph(out, formula, most);
  source.statistics.assertions = content.assertions;
  source.statistics.terms = std::min(counts.num_terms(), most);
  source.statistics.definitions = printer.definitions();
}

/// The forms with define-fun. Everything compound is written exactly once in them: what is shared
/// gets a definition. A constant is written wherever it is referred to.
void write_definitions(const DocumentSource& source, std::ostream& out) {
  const bool several = source.line.form == Form::terms;
  Content content = several ? all_assertions(source) : content_in_force(source);
  require_writable_names(source, content.terms);
  if (!several) {
    content.terms = {conjunction(source.manager, std::move(content.terms))};
  }
  ReferenceCounts counts;
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> sorts;
  for (const Term* term : content.terms) {
    counts.add_reference(term);
    TermPrinter::collect_symbols_and_types(term, symbols, sorts);
  }
  FreeNames names(symbols);
  AnnotationMap attributes;
  const auto printed_once = [&](const Term* term) {
    return counts.is_counted(term) && (term->symbol->arity != 0 || !counts.is_shared(term));
  };
  keep_attributes(source.script, printed_once, names, source.diagnostics, attributes);
  const auto print = [&](auto& printer) {
    if (several) {
      printer.print_terms(out, content.terms);
    } else {
      printer.print_formula(out, content.terms.front());
    }
    source.statistics.definitions = printer.definitions();
  };
  with_printer<SmtLib2TermPrinter>(source.line.label, print, &source.manager, source.logic(),
                                   source.status(several ? "" : content.status), true, &attributes);
  end_with_query(out, content.has_query);
  source.statistics.assertions = content.assertions;
  source.statistics.terms = counts.num_terms();
}

}  // namespace

std::string DocumentSource::logic() const {
  std::string name = line.logic.value_or(script.output_logic());
  if (name.empty()) {
    return name;
  }
  if (line.form != Form::v1) {
    return v2_symbol(name);
  }
  if (v1_identifier(name) != name) {
    throw CannotExpress("the logic '" + name + "' is no identifier of SMT-LIB 1.2");
  }
  return name;
}

std::string DocumentSource::status(const std::string& of_input) const {
  if (line.status) {
    return *line.status;
  }
  const std::string_view word = symbol_name(of_input);
  if (word.empty() || is_status(word)) {
    return std::string(word);
  }
  diagnostics.warn("the status " + of_input + " is left out: it is not sat, unsat or unknown");
  return "";
}

void require_writable_names(const DocumentSource& source, const std::vector<const Term*>& terms) {
  const bool v1_format = source.line.form == Form::v1;
  // Nearly always all names of the input can be written, which takes no look at the terms.
  if (check_names(all_symbols(source.script), v1_format).empty()) {
    return;
  }
  const std::vector<NameProblem> problems = check_names(source.manager, terms, v1_format);
  if (problems.empty()) {
    return;
  }
  constexpr std::size_t most_shown = 10;
  std::string message;
  for (std::size_t i = 0; i < std::min(problems.size(), most_shown); ++i) {
    message += (i == 0 ? "" : "; ") + ("symbol '" + std::string(problems[i].symbol->name_view())) +
               "' " + problems[i].reason;
  }
  if (problems.size() > most_shown) {
    message += "; and " + std::to_string(problems.size() - most_shown) + " more";
  }
  throw CannotExpress(message);
}

void write_document(const DocumentSource& source, std::ostream& out) {
  switch (source.line.form) {
    case Form::v1:
    case Form::v2:
      write_plain(source, out);
      break;
    case Form::define_fun:
    case Form::terms:
      write_definitions(source, out);
      break;
    case Form::trace:
      write_trace(source, out);
      break;
    case Form::dot:
      write_drawing(source, out);
      break;
  }
}

}  // namespace brum::tools
