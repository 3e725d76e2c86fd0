// The part of the parser of terms that reads symbols and what stands behind an opening bracket.

#include <array>
#include <string_view>
#include <utility>

#include "brum/readers/smtlib2_term_parser.h"

namespace brum {

namespace {

constexpr std::array<std::pair<std::string_view, const char*>, 12> foreign_prefixes{{
    {"fp.", "floating point"},
    {"str.", "strings"},
    {"re.", "strings"},
    {"seq.", "sequences"},
    {"set.", "sets"},
    {"bag.", "bags"},
    {"ff.", "finite fields"},
    {"to_fp", "floating point"},
    {"RN", "floating point"},
    {"RT", "floating point"},
    {"round", "floating point"},
    {"lambda", "functions as terms"},
}};

/// Says to which theory an unknown name probably belongs, as ` (strings)`; nothing for most names.
std::string foreign_theory(std::string_view name) {
  for (const auto& [prefix, theory] : foreign_prefixes) {
    if (name.starts_with(prefix))
      return std::string(" (") + theory + ')';
  }
  return "";
}

bool is_word(const Token& token, std::string_view word) {
  return token.kind == TokenKind::symbol && !token.quoted && token.text == word;
}

/// Whether this is `bv` and a numeral.
bool is_bit_vector_value(std::string_view text) {
  if (!text.starts_with("bv") || text.size() == 2)
    return false;
  return text.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

}  // namespace

void SmtLib2TermParser::error_unknown(const Token& token) const {
  c_.lexer.error(token.position, "found the symbol " + std::string(token.raw) +
                                     foreign_theory(token.text) + ", expected a declared symbol");
}

void SmtLib2TermParser::expect_right_bracket() {
  if (c_.lexer.next().kind != TokenKind::right_bracket)
    c_.lexer.error_expected("')'");
}

Name& SmtLib2TermParser::read_name(const std::string& expected) {
  const Token& token = c_.lexer.next();
  if (token.kind != TokenKind::symbol)
    c_.lexer.error_expected(expected);
  Name& name = c_.names.get(token.text);
  if (name.reserved != ReservedWord::none && !token.quoted) {
    c_.lexer.error(token.position,
                   "found the reserved word " + std::string(token.text) + ", expected " + expected);
  }
  return name;
}

/// Gives what a symbol without brackets denotes.
Value SmtLib2TermParser::symbol(const Token& token) {
  Name& name = c_.names.get(token.text);
  if (name.reserved != ReservedWord::none && !token.quoted) {
    c_.lexer.error(token.position,
                   "found the reserved word " + std::string(token.text) + ", expected a term");
  }
  if (name.binding.kind != BindingKind::value) [[unlikely]] {
    return look_up_constant(name, token);
  }
  return name.binding.value();
}

/// Gives the same for a name that no value is bound to. The name of a declared constant is bound to
/// its value from then on.
Value SmtLib2TermParser::look_up_constant(Name& name, const Token& token) {
  if (name.is_free() && c_.use_signature)
    find_in_signature(name);
  const BindingKind kind = name.binding.kind;
  if (kind == BindingKind::function && name.binding.function->arity == 0) {
    const Term* constant = c_.builder.manager().make_term(name.binding.function);
    name.binding = Binding::to_value({constant, false});
    return {constant, false};
  }
  if (kind == BindingKind::definition && name.binding.definition->parameter_sorts.empty()) {
    return c_.definitions.apply(*name.binding.definition, name.text, {});
  }
  if (kind == BindingKind::none) {
    if (name.theory_operator == nullptr)
      error_unknown(token);
    if (name.theory_operator->shape == Shape::constant) {
      return apply_operator(c_.builder, *name.theory_operator, {}, {});
    }
  }
  c_.lexer.error(token.position,
                 "found " + std::string(token.raw) + " without arguments, expected a term");
}

/// Reads on behind an opening bracket. Gives whether a whole term was read.
bool SmtLib2TermParser::open(TextPosition position) {
  const Token& head = c_.lexer.next();
  if (head.kind == TokenKind::left_bracket) {
    open_compound_head(position);
    return false;
  }
  if (head.kind != TokenKind::symbol) {
    c_.lexer.error_expected("an operator, a function, let, ! or _");
  }
  Name& name = c_.names.get(head.text);
  switch (head.quoted ? ReservedWord::none : name.reserved) {
    case ReservedWord::none:
      open_application(name, head, position);
      return false;
    case ReservedWord::let: {
      Frame frame = new_frame(Frame::Kind::let_binding, position);
      frame.first_value = bindings_.size();
      frames_.push_back(frame);
      open_let();
      return false;
    }
    case ReservedWord::exclamation:
      c_.builder.side_conditions().begin_definition();
      frames_.push_back(new_frame(Frame::Kind::annotated, position));
      return false;
    case ReservedWord::underscore:
      values_.push_back(indexed_constant());
      return true;
    case ReservedWord::as_word:
      values_.push_back(qualified_constant());
      return true;
    case ReservedWord::forall:
    case ReservedWord::exists:
    case ReservedWord::match:
    case ReservedWord::other:
      break;
  }
  error_reserved(name, head, position);
}

/// Throws for a reserved word behind the opening bracket at `position` that begins nothing that is
/// read.
void SmtLib2TermParser::error_reserved(const Name& name, const Token& word,
                                       TextPosition position) const {
  const std::string found = "found " + std::string(word.text);
  if (name.reserved == ReservedWord::forall || name.reserved == ReservedWord::exists)
    c_.lexer.error(position, found + " (quantifiers), expected a term without quantifiers");
  if (name.reserved == ReservedWord::match)
    c_.lexer.error(position, found + " (datatypes), expected a term without datatypes");
  c_.lexer.error(word.position, "found the reserved word " + std::string(word.text) +
                                    ", expected an operator, a function, let, ! or _");
}

void SmtLib2TermParser::open_application(Name& name, const Token& token, TextPosition position) {
  if (name.is_free() && c_.use_signature)
    find_in_signature(name);
  Frame frame = new_frame(Frame::Kind::operation, position);
  frame.name = &name;
  const Binding& binding = name.binding;
  const Operator* const op = name.theory_operator;
  if (binding.kind == BindingKind::none && op != nullptr && op->shape != Shape::constant &&
      op->num_indices == 0) {
    frame.op = op;
  } else if (binding.kind == BindingKind::function && binding.function->arity > 0) {
    frame.kind = Frame::Kind::function;
    frame.function = binding.function;
  } else if (binding.kind == BindingKind::definition &&
             !binding.definition->parameter_sorts.empty()) {
    frame.kind = Frame::Kind::definition;
    frame.definition = binding.definition;
  } else {
    error_no_function(name, token);
  }
  frames_.push_back(frame);
}

/// Throws for a symbol behind an opening bracket that takes no arguments, or none as it stands.
void SmtLib2TermParser::error_no_function(const Name& name, const Token& token) const {
  const std::string found = "found " + std::string(token.raw);
  if (name.binding.kind == BindingKind::none && name.theory_operator == nullptr)
    error_unknown(token);
  if (name.binding.kind == BindingKind::none && name.theory_operator->num_indices > 0) {
    c_.lexer.error(token.position, found + " without indices, expected ((_ " +
                                       std::string(token.raw) + " index) argument)");
  }
  c_.lexer.error(token.position, found + ", which takes no arguments, expected a function");
}

/// Reads on behind `((`.
void SmtLib2TermParser::open_compound_head(TextPosition position) {
  const Token& word = c_.lexer.next();
  if (is_word(word, "_")) {
    open_indexed(position);
  } else if (is_word(word, "as")) {
    open_qualified(position);
  } else {
    c_.lexer.error_expected("_ or as");
  }
}

/// Reads numerals and the closing bracket behind them.
void SmtLib2TermParser::read_indices() {
  while (true) {
    const Token& token = c_.lexer.next();
    if (token.kind == TokenKind::right_bracket)
      return;
    if (token.kind != TokenKind::numeral)
      c_.lexer.error_expected("an index or ')'");
    indices_.push_back(QNumber::from_string(token.text));
  }
}

/// Reads on behind `((_`.
void SmtLib2TermParser::open_indexed(TextPosition position) {
  const Token& token = c_.lexer.next();
  if (token.kind != TokenKind::symbol)
    c_.lexer.error_expected("an indexed operator");
  Name& name = c_.names.get(token.text);
  if (name.theory_operator == nullptr || name.theory_operator->num_indices == 0) {
    c_.lexer.error(token.position, "found the symbol " + std::string(token.raw) +
                                       foreign_theory(token.text) +
                                       ", expected an indexed operator");
  }
  const TextPosition place = token.position;
  Frame frame = new_frame(Frame::Kind::operation, position);
  frame.op = name.theory_operator;
  frame.name = &name;
  read_indices();
  const std::size_t found = indices_.size() - frame.first_index;
  if (found != name.theory_operator->num_indices) {
    c_.lexer.error(place, "found " + std::to_string(found) +
                              (found == 1 ? " index of " : " indices of ") +
                              std::string(name.text) + ", expected " +
                              std::to_string(name.theory_operator->num_indices));
  }
  frames_.push_back(frame);
}

/// Reads on behind `(_`, where a whole term is expected: only bit-vector values are such.
Value SmtLib2TermParser::indexed_constant() {
  const Token& token = c_.lexer.next();
  if (token.kind != TokenKind::symbol || !is_bit_vector_value(token.text)) {
    if (token.kind != TokenKind::symbol)
      c_.lexer.error_expected("bv and a numeral");
    c_.lexer.error(token.position, "found the symbol " + std::string(token.raw) +
                                       foreign_theory(token.text) + ", expected bv and a numeral");
  }
  const TextPosition position = token.position;
  const QNumber value = QNumber::from_string(token.text.substr(2));
  const std::size_t first_index = indices_.size();
  read_indices();
  const std::size_t found = indices_.size() - first_index;
  if (found != 1) {
    c_.lexer.error(position, "found " + std::to_string(found) +
                                 " indices of a bit-vector, expected its width");
  }
  constexpr std::uint64_t largest_width = 0xFFFFFFFF;
  const std::optional<std::uint64_t> width = indices_.back().to_uint64();
  indices_.resize(first_index);
  if (!width || *width > largest_width) {
    c_.lexer.error(position, "found a bit-vector of too many bits, expected at most 4294967295");
  }
  try {
    return {c_.builder.manager().make_bv_number(value, static_cast<std::size_t>(*width)), false};
  } catch (const Exception& error) {
    c_.lexer.error(position, error.what());
  }
}

/// Reads on behind `(as`, where a whole term is expected.
Value SmtLib2TermParser::qualified_constant() {
  const Token& token = c_.lexer.next();
  if (token.kind != TokenKind::symbol)
    c_.lexer.error_expected("a symbol");
  const TextPosition position = token.position;
  const Value value = symbol(token);
  const DataType* sort = c_.sorts.parse();
  if (c_.builder.sort_of(value) != sort) {
    c_.lexer.error(position, "found a term of sort " + c_.builder.sort_of(value)->to_short_str() +
                                 ", expected " + sort->to_short_str());
  }
  expect_right_bracket();
  return value;
}

/// Reads on behind `((as`.
void SmtLib2TermParser::open_qualified(TextPosition position) {
  const Token& token = c_.lexer.next();
  if (token.kind != TokenKind::symbol)
    c_.lexer.error_expected("a function");
  const TextPosition place = token.position;
  Name& name = c_.names.get(token.text);
  if (name.is_free() && token.text == "const") {
    c_.lexer.error(place, "found const (arrays of one value), expected a declared function");
  }
  open_application(name, token, position);
  const DataType* sort = c_.sorts.parse();
  const Frame& frame = frames_.back();
  const bool fits = frame.kind == Frame::Kind::function ? frame.function->get_output_type() == sort
                                                        : frame.kind == Frame::Kind::definition &&
                                                              frame.definition->result_sort == sort;
  if (!fits) {
    c_.lexer.error(place, "found " + std::string(name.text) + " as " + sort->to_short_str() +
                              ", expected a function with this result");
  }
  expect_right_bracket();
}

}  // namespace brum
