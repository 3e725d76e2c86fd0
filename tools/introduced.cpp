#include "introduced.h"

#include <string>
#include <vector>

#include "brum/printers/smtlib_term_printer.h"

namespace brum::tools {

namespace {

/// Writes the definition of one symbol for division or remainder.
class IntroducedWriter {
 public:
  IntroducedWriter(const DocumentSource& source, std::ostream& out)
      : manager_(source.manager), printer_(false, &source.manager, "", ""), out_(out) {}

  void write(const IntroducedSymbol& introduced) {
    const std::string name = printer_.to_smtlib(std::string(introduced.symbol->name_view()));
    if (introduced.operation == "distinct") {
      out_ << "; " << name << ": distinct\n";
      return;
    }
    const DataType* sort = introduced.symbol->get_output_type();
    const std::string sort_name = sort->to_str();
    out_ << "(define-fun " << name << " (";
    if (introduced.arguments.empty()) {
      const char* zero = sort == manager_.get_real_type() ? "0.0" : "0";
      out_ << "(x " << sort_name << ")) " << sort_name << " (" << introduced.operation << " x "
           << zero << "))\n";
      return;
    }
    out_ << ") " << sort_name << " (" << introduced.operation;
    for (const Term* argument : introduced.arguments) {
      out_ << ' ';
      write_argument(argument, sort);
    }
    out_ << "))\n";
  }

 private:
  /// Division takes an Int where it wants a Real.
  void write_argument(const Term* argument, const DataType* sort) {
    const bool converted = argument->sort() != sort;
    out_ << (converted ? "(to_real " : "");
    printer_.print_single_term(out_, argument, false);
    out_ << (converted ? ")" : "");
  }

  TermManager& manager_;
  SmtLibTermPrinter printer_;
  std::ostream& out_;
};

}  // namespace

void write_introduced(const DocumentSource& source, std::ostream& out) {
  std::vector<const Term*> terms;
  for (const IntroducedSymbol& introduced : source.script.introduced) {
    terms.insert(terms.end(), introduced.arguments.begin(), introduced.arguments.end());
  }
  require_writable_names(source, terms);
  IntroducedWriter writer(source, out);
  for (const IntroducedSymbol& introduced : source.script.introduced) {
    writer.write(introduced);
  }
}

}  // namespace brum::tools
