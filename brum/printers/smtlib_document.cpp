#include <array>
#include <charconv>
#include <span>
#include <string>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/printers/write_text.h"
#include "brum/utils/concat.h"
#include "brum/utils/scope_exit.h"

// The framing of documents, bindings and applications.

namespace brum {

void SmtLibTermPrinter::print_start(std::ostream& out) {
  open_lets = 0;
  if (single_term) {
    return;
  }
  if (v1_format) {
    write_text(out, "(benchmark unnamed\n");
    if (!status.empty()) {
      write_text(out, concat({":status ", status, "\n"}));
    }
    if (!logic.empty()) {
      write_text(out, concat({":logic ", logic, "\n"}));
    }
    write_text(out, ":source { printed by Brumlin }\n");
    return;
  }
  if (!logic.empty()) {
    write_text(out, concat({"(set-logic ", logic, ")\n"}));
  }
  if (!status.empty()) {
    write_text(out, concat({"(set-info :status ", status, ")\n"}));
  }
  write_text(out, "(set-info :source |printed by Brumlin|)\n");
}

void SmtLibTermPrinter::print_define_section_start(std::ostream& out) {
  if (!single_term) {
    write_text(out, v1_format ? "\n:formula\n" : "(assert\n");
  }
}

void SmtLibTermPrinter::get_define_label(const Term* term, std::string& label) {
  if (!v1_format) {
    make_label(".def_", term, label);
  } else if (term->sort() == mgr->get_bool_type()) {
    make_label("$def_", term, label);
  } else {
    make_label("?def_", term, label);
  }
}

void SmtLibTermPrinter::make_label(std::string_view prefix, const Term* term,
                                   std::string& label) const {
  constexpr std::size_t most_digits = 20;
  std::array<char, 44> start;
  if (prefix.size() > start.size() - most_digits) {
    label = concat({prefix, std::to_string(term->id)});
  } else {
    copy_text(start.data(), prefix.data(), prefix.size());
    char* const digits = start.data() + prefix.size();
    const char* const end = std::to_chars(digits, digits + most_digits, term->id).ptr;
    label.assign(start.data(), static_cast<std::size_t>(end - start.data()));
  }
  while (mgr->get_signature()->get_symbol(std::string_view(label)) != nullptr) {
    label += '_';
  }
}

std::string SmtLibTermPrinter::make_label(std::string_view prefix, const Term* term) const {
  std::string label;
  make_label(prefix, term, label);
  return label;
}

void SmtLibTermPrinter::print_define_start(std::ostream& out, const std::string& label,
                                           const Term* term) {
  if (!v1_format) {
    write_parts(out, piece_memory, "(let ((", label, " ");
  } else if (term->sort() == mgr->get_bool_type()) {
    write_parts(out, piece_memory, "(flet (", label, " ");
  } else {
    write_parts(out, piece_memory, "(let (", label, " ");
  }
  ++open_lets;
}

void SmtLibTermPrinter::print_define_end(std::ostream& out, const Term* /*term*/) {
  if (v1_format) {
    write_text(out, use_newlines ? ")\n" : ") ");
  } else {
    write_text(out, use_newlines ? "))\n" : ")) ");
  }
}

void SmtLibTermPrinter::print_term_and_children(std::ostream& out, const Term* term,
                                                const std::vector<std::string>& children) {
  const Symbol* symbol = term->symbol;
  const std::string_view name = name_of(symbol);
  if (symbol->arity == 0) {
    write_text(out, name);
    return;
  }
  const bool is_congruence = TermManager::get_tag(symbol) == SymbolTag::int_modular_congruence;
  const DataType* const real_type = v1_format ? nullptr : mgr->get_real_type();
  const std::span<const std::string> texts = children;
  std::size_t most_bytes = name.size() + sizeof("( (-))");
  for (const std::string& text : texts) {
    most_bytes += text.size() + sizeof(" (to_real )");
  }
  const auto spell = [&](auto& piece) {
    piece.add('(');
    piece.add(name);
    if (is_congruence) {
      piece.add(" (-");  // congruent means that the difference is divisible
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const bool is_converted = symbol->type->get_component(i + 1) == real_type &&
                                term->children[i]->sort() == mgr->get_int_type();
      if (is_converted) {
        piece.add(" (to_real ");
        piece.add(texts[i]);
        piece.add(')');
      } else {
        piece.add(' ');
        piece.add(texts[i]);
      }
    }
    piece.add(')');
    if (is_congruence) {
      piece.add(')');
    }
  };
  if (most_bytes > TextPiece::long_bytes) {
    TextParts parts(out);
    spell(parts);
  } else {
    TextPiece piece(out, piece_memory, most_bytes);
    spell(piece);
    piece.write();
  }
}

void SmtLibTermPrinter::print_formula_term(std::ostream& out, const std::string& text,
                                           const Term* /*term*/) {
  if (use_newlines && v1_format) {
    write_text(out, "\n");
  }
  write_text(out, text);
  if (use_newlines) {
    write_text(out, "\n");
  }
}

void SmtLibTermPrinter::print_end(std::ostream& out) {
  if (open_lets > 0) {
    write_text(out, std::string(static_cast<std::size_t>(open_lets), ')'));
  }
  if (!single_term) {
    write_text(out, v1_format ? "\n)\n" : ")\n");
  }
  open_lets = 0;
}

void SmtLibTermPrinter::print_single_term(std::ostream& out, const Term* term, bool newlines) {
  const ScopeExit restore([this] {
    use_newlines = true;
    single_term = false;
  });
  single_term = true;
  use_newlines = newlines;
  print_formula(out, term);
}

}  // namespace brum
