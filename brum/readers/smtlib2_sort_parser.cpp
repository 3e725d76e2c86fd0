#include "brum/readers/smtlib2_sort_parser.h"

#include <cstdint>
#include <optional>
#include <string>

namespace brum {

namespace {

bool is_underscore(const Token& token) {
  return token.kind == TokenKind::symbol && !token.quoted && token.text == "_";
}

std::string count_of_sorts(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " sort" : " sorts");
}

}  // namespace

const DataType* SmtLib2SortParser::parameter(std::size_t index) {
  return manager_.make_uninterpreted_type("sort parameter|" + std::to_string(index));
}

const DataType* SmtLib2SortParser::parse() {
  frames_.clear();
  arguments_.clear();
  while (true) {
    const Token& token = lexer_.next();
    const DataType* sort = nullptr;
    if (token.kind == TokenKind::symbol) {
      sort = constant(token);
    } else if (token.kind == TokenKind::left_bracket) {
      sort = open(token.position);
    } else if (token.kind == TokenKind::right_bracket && !frames_.empty()) {
      sort = close(frames_.back());
      arguments_.resize(frames_.back().first_argument);
      frames_.pop_back();
    } else {
      lexer_.error_expected("a sort");
    }
    if (sort == nullptr)
      continue;
    if (frames_.empty())
      return sort;
    arguments_.push_back(sort);
  }
}

SortBinding SmtLib2SortParser::find(const Token& token) const {
  const SortBinding binding = scopes_.find_sort(names_.get(token.text));
  switch (binding.kind) {
    case SortBinding::Kind::none:
      lexer_.error(token.position,
                   "found the sort " + std::string(token.raw) + ", expected a declared sort");
    case SortBinding::Kind::refused:
      lexer_.error(token.position, "found the sort " + std::string(token.raw) + " (" +
                                       binding.reason + "), expected a sort that can be held");
    case SortBinding::Kind::sort:
    case SortBinding::Kind::family:
    case SortBinding::Kind::definition:
    case SortBinding::Kind::array:
    case SortBinding::Kind::bit_vector:
      break;
  }
  return binding;
}

const DataType* SmtLib2SortParser::constant(const Token& token) {
  const SortBinding binding = find(token);
  if (binding.kind != SortBinding::Kind::sort) {
    lexer_.error(token.position,
                 "found " + std::string(token.raw) + " alone, expected it with its parameters");
  }
  return binding.sort;
}

/// Reads on behind an opening bracket. Gives an indexed sort at once, null for the head of others.
const DataType* SmtLib2SortParser::open(TextPosition position) {
  const Token& head = lexer_.next();
  if (head.kind != TokenKind::symbol)
    lexer_.error_expected("the name of a sort or _");
  if (is_underscore(head))
    return indexed();
  const SortBinding binding = find(head);
  if (binding.kind == SortBinding::Kind::bit_vector) {
    lexer_.error_expected("(_ BitVec width)");
  }
  frames_.push_back({binding, &names_.get(head.text), arguments_.size(), position});
  return nullptr;
}

/// Reads on behind `(_`.
const DataType* SmtLib2SortParser::indexed() {
  const Token& name = lexer_.next();
  if (name.kind != TokenKind::symbol)
    lexer_.error_expected("BitVec");
  const SortBinding binding = scopes_.find_sort(names_.get(name.text));
  if (binding.kind == SortBinding::Kind::refused)
    find(name);
  if (binding.kind != SortBinding::Kind::bit_vector)
    lexer_.error_expected("BitVec");
  const Token& number = lexer_.next();
  if (number.kind != TokenKind::numeral)
    lexer_.error_expected("the width of a bit-vector");
  const std::optional<std::uint64_t> width = QNumber::from_string(number.text).to_uint64();
  constexpr std::uint64_t largest_width = 0xFFFFFFFF;
  if (!width || *width == 0 || *width > largest_width) {
    lexer_.error_expected("a width from 1 to 4294967295");
  }
  if (lexer_.next().kind != TokenKind::right_bracket)
    lexer_.error_expected("')'");
  return manager_.make_bv_type(static_cast<std::size_t>(*width));
}

const DataType* SmtLib2SortParser::close(const Frame& frame) {
  const std::span<const DataType* const> arguments(arguments_.data() + frame.first_argument,
                                                   arguments_.size() - frame.first_argument);
  const std::size_t wanted = frame.head.num_parameters;
  if (wanted == 0)
    lexer_.error(frame.position,
                 "found a sort without parameters in brackets, expected its name alone");
  if (arguments.size() != wanted) {
    lexer_.error(frame.position, "found " + count_of_sorts(arguments.size()) +
                                     " as parameters, expected " + std::to_string(wanted));
  }
  if (frame.head.kind == SortBinding::Kind::array) {
    return manager_.make_array_type(arguments[0], arguments[1]);
  }
  if (frame.head.kind == SortBinding::Kind::family) {
    return sort_of({frame.name, {arguments.begin(), arguments.end()}});
  }
  return expand(frame.head.sort, arguments);
}

// Sorts that were declared with parameters.

/// The manager knows uninterpreted sorts by their names, also from other texts, so the name of such
/// a sort says exactly what it is: the family, and where each parameter lies. What stands before
/// the first bar is for messages, and cut, as a sort may be made of others again and again. No sort
/// of the input has a bar in its name.
const DataType* SmtLib2SortParser::sort_of(const Member& member) {
  constexpr std::size_t most_bytes = 100;
  std::string text = "(" + std::string(member.family->text);
  std::string identity = "|" + std::string(member.family->text);
  for (const DataType* parameter : member.parameters) {
    const std::string part = parameter->to_short_str();
    text += text.size() + part.size() < most_bytes ? ' ' + part : " ...";
    identity += '|' + std::to_string(reinterpret_cast<std::uintptr_t>(parameter));
  }
  const DataType* sort = manager_.make_uninterpreted_type(text + ')' + identity);
  members_[sort] = member;
  return sort;
}

/// The sorts of which an array sort or an application of a declared one is made.
std::vector<const DataType*> SmtLib2SortParser::parts_of(const DataType* sort) const {
  if (sort->kind() == DataType::Kind::array) {
    return {sort->get_component(0), sort->get_component(1)};
  }
  const auto member = members_.find(sort);
  return member == members_.end() ? std::vector<const DataType*>() : member->second.parameters;
}

/// The same sort made of other parts.
const DataType* SmtLib2SortParser::with_parts(const DataType* sort,
                                              const std::vector<const DataType*>& parts) {
  if (parts.empty()) {
    return sort;
  }
  if (sort->kind() == DataType::Kind::array) {
    return manager_.make_array_type(parts[0], parts[1]);
  }
  return sort_of({members_.find(sort)->second.family, parts});
}

/// Gives the body with the arguments in the places of the parameters; each sort in it once.
const DataType* SmtLib2SortParser::expand(const DataType* body,
                                          std::span<const DataType* const> arguments) {
  hsh::HashMap<const DataType*, const DataType*> expanded;
  bool is_same = true;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    expanded[parameter(i)] = arguments[i];
    is_same = is_same && arguments[i] == parameter(i);
  }
  if (is_same)
    return body;
  std::vector<const DataType*> pending{body};
  while (!pending.empty()) {
    const DataType* sort = pending.back();
    if (expanded.find(sort) != expanded.end()) {
      pending.pop_back();
      continue;
    }
    std::vector<const DataType*> parts = parts_of(sort);
    for (const DataType*& part : parts) {
      const auto known = expanded.find(part);
      if (known == expanded.end())
        pending.push_back(part);
      else
        part = known->second;
    }
    if (pending.back() == sort) {
      expanded[sort] = with_parts(sort, parts);
    }
  }
  return expanded[body];
}

}  // namespace brum
