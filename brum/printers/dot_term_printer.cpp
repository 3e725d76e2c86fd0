#include "brum/printers/dot_term_printer.h"

#include "brum/printers/write_text.h"
#include "brum/utils/concat.h"
#include "brum/utils/scope_exit.h"

namespace brum {

namespace {

/// Numerals and names may be long; a picture shows the beginning.
constexpr std::size_t longest_label = 40;

std::string node_name(const Term* term) {
  return "n" + std::to_string(term->id);
}

bool is_constant(const Term* term) {
  return term->symbol->arity == 0;
}

/// Gives the beginning of a UTF-8 text, followed by three dots where that is not all.
std::string shortened(std::string text) {
  if (text.size() > longest_label) {
    const auto is_continuation = [](char byte) {
      return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    };
    std::size_t end = longest_label;
    while (end > 0 && is_continuation(text[end])) {
      --end;
    }
    text.resize(end);
    text += "...";
  }
  return text;
}

/// Gives the text as Graphviz wants it between quotation marks: it gives backslashes and entities
/// such as `&amp;` a meaning.
std::string escaped(std::string_view text) {
  std::string result;
  for (const char byte : text) {
    if (byte == '"' || byte == '\\') {
      result += '\\';
      result += byte;
    } else if (byte == '&') {
      result += "&amp;";
    } else if (byte == '\n') {
      result += "\\n";
    } else {
      result += byte;
    }
  }
  return result;
}

}  // namespace

DotTermPrinter::DotTermPrinter(TermManager* manager)
    : TermPrinter(manager), spelling_(false, manager, "", "") {}

void DotTermPrinter::print_graph(std::ostream& out, const Term* formula, std::size_t most_nodes) {
  choose_nodes(formula, most_nodes);
  is_limited_ = true;
  const ScopeExit show_all_again([this] { is_limited_ = false; });
  print_formula(out, formula);
}

void DotTermPrinter::choose_nodes(const Term* formula, std::size_t most_nodes) {
  chosen_.clear();
  chosen_[formula] = true;
  std::vector<const Term*> nearest{formula};
  for (std::size_t i = 0; i < nearest.size(); ++i) {
    for (const Term* argument : nearest[i]->arguments()) {
      if (nearest.size() < most_nodes && !chosen_.get(argument)) {
        chosen_[argument] = true;
        nearest.push_back(argument);
      }
    }
  }
}

// The graph around the nodes.

void DotTermPrinter::print_start(std::ostream& out) {
  begin_drawing();
  write_text(out,
             "digraph formula {\n"
             "  graph [ordering=out];\n"
             "  node [fontname=\"Helvetica\", style=filled, fillcolor=white];\n"
             "  edge [arrowsize=0.7];\n");
}

void DotTermPrinter::print_end(std::ostream& out) {
  write_shared_nodes(out);
  write_text(out, "}\n");
}

void DotTermPrinter::begin_drawing() {
  edges_to_.clear();
  shared_.clear();
}

void DotTermPrinter::print_single_term(std::ostream& out, const Term* term, bool /*flag*/) {
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> types;
  collect_symbols_and_types(term, symbols, types);
  begin_drawing();
  for (const Symbol* symbol : symbols) {
    print_symbol_declaration(out, symbol);
  }
  DefinitionMap defs;
  const std::string text = do_print_term(out, term, defs);
  print_formula_term(out, text, term);
  write_shared_nodes(out);
}

void DotTermPrinter::print_formula_term(std::ostream& out, const std::string& text,
                                        const Term* term) {
  const std::string name = node_name(term);
  if (text != name) {
    write_text(out, text);
  }
  write_text(out, concat({"  ", name, " [penwidth=2];\n"}));
}

// Nodes.

void DotTermPrinter::print_symbol_declaration(std::ostream& out, const Symbol* symbol) {
  if (symbol->arity == 0) {
    const Term* term = mgr->make_term(symbol);  // the one that mentions the symbol
    if (is_shown(term)) {
      write_text(
          out, concat({"  ", node_name(term), " [label=\"", label_of(term), "\", shape=box];\n"}));
    }
  }
}

void DotTermPrinter::print_term_and_children(std::ostream& out, const Term* term,
                                             const std::vector<std::string>& children) {
  if (is_constant(term)) {
    write_text(out, node_name(term));
    return;
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (children[i] != node_name(term->children[i])) {
      write_text(out, children[i]);
    }
    count_edge(term->children[i]);
  }
  if (!is_shown(term)) {
    return;
  }
  const std::string node = "  " + node_name(term);
  const std::string edge = node + " -> ";
  write_text(out, concat({node, " [label=\"", label_of(term), "\"];\n"}));
  bool are_all_shown = true;
  for (const Term* argument : term->arguments()) {
    if (is_shown(argument)) {
      write_text(out, concat({edge, node_name(argument), ";\n"}));
    } else {
      are_all_shown = false;
    }
  }
  if (!are_all_shown) {
    const std::string dots = "more" + std::to_string(term->id);
    write_text(out, concat({"  ", dots, " [label=\"...\", shape=plaintext];\n"}));
    write_text(out, concat({edge, dots, " [style=dashed];\n"}));
  }
}

std::string DotTermPrinter::label_of(const Term* term) {
  return escaped(shortened(spelling_.to_smtlib(term->symbol)));
}

// Sharing is known when all edges are written; what is said of a node last holds.

void DotTermPrinter::count_edge(const Term* argument) {
  std::uint8_t& edges = edges_to_[argument];
  if (edges == 1 && !is_constant(argument)) {
    shared_.push_back(argument);
  }
  edges = edges == 0 ? 1 : 2;
}

void DotTermPrinter::write_shared_nodes(std::ostream& out) {
  for (const Term* term : shared_) {
    if (is_shown(term)) {
      std::string label;
      spelling_.get_define_label(term, label);
      write_text(out, concat({"  ", node_name(term), " [label=\"", label_of(term), "\\n",
                              escaped(label), "\", fillcolor=gold];\n"}));
    }
  }
}

// What a drawing has no use for.

void DotTermPrinter::print_type_declaration(std::ostream& /*out*/, const DataType* /*type*/) {}
void DotTermPrinter::print_define_section_start(std::ostream& /*out*/) {}
void DotTermPrinter::print_define_start(std::ostream& /*out*/, const std::string& /*label*/,
                                        const Term* /*term*/) {}
void DotTermPrinter::print_define_end(std::ostream& /*out*/, const Term* /*term*/) {}

void DotTermPrinter::get_define_label(const Term* term, std::string& label) {
  label = node_name(term);
}

}  // namespace brum
