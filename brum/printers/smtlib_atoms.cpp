#include <string>
#include <vector>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/printers/write_text.h"

// Atoms written out in full.

namespace brum {

namespace {

/// An application that is being written out.
struct OpenApplication {
  const Term* term;
  std::uint64_t written;  // the number of arguments that are written or begun
};

}  // namespace

bool SmtLibTermPrinter::is_connective(const Symbol* symbol) const {
  return symbol == mgr->get_and_symbol() || symbol == mgr->get_or_symbol() ||
         symbol == mgr->get_not_symbol() || symbol == mgr->get_iff_symbol();
}

// Atoms are, and negations of them, however many; other Boolean structure is not.
bool SmtLibTermPrinter::is_printed_flat(const Term* term) const {
  if (!is_connective(term->symbol)) {
    return true;
  }
  const Term* below = term;
  while (below->symbol == mgr->get_not_symbol()) {
    below = below->children[0];
  }
  const Symbol* symbol = below->symbol;
  return below->sort() == mgr->get_bool_type() && !is_connective(symbol) &&
         symbol != mgr->get_true_symbol() && symbol != mgr->get_false_symbol();
}

void SmtLibTermPrinter::print_atom(std::ostream& out, const Term* term) {
  std::vector<OpenApplication> open;
  // Below a negation that is printed flat all is, down to the atom: looking again at each level
  // would cost the square of their number.
  bool known_flat = false;
  for (const Term* next = term;;) {
    if (!known_flat && !is_printed_flat(next)) {
      print_term(out, next, false);
    } else {
      if (next->symbol->arity != 0) {
        write_text(out, "(");
        open.push_back({next, 0});
      }
      write_text(out, to_smtlib(next->symbol));
    }
    while (!open.empty() && open.back().written == open.back().term->symbol->arity) {
      write_text(out, ")");
      open.pop_back();
    }
    if (open.empty()) {
      return;
    }
    write_text(out, " ");
    OpenApplication& around = open.back();
    known_flat = around.term->symbol == mgr->get_not_symbol();
    next = around.term->children[around.written];
    ++around.written;
  }
}

}  // namespace brum
