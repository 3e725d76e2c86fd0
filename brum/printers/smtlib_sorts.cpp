#include <string>
#include <utility>
#include <vector>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/printers/text_piece.h"
#include "brum/printers/write_text.h"
#include "brum/utils/concat.h"

// How sorts are spelt, and the declarations of sorts and symbols.

namespace brum {

namespace {

/// Texts of sorts inside a sort are kept for later use only up to this length in bytes: keeping
/// every one of a nest would cost the square of its depth.
constexpr std::size_t longest_kept_component = 4096;

/// An array sort whose components are being written.
struct OpenArray {
  const DataType* sort;
  std::size_t begin;    // where its text begins
  std::size_t written;  // the number of components that are written or begun
};

/// True for the sorts that SMT-LIB has a text for.
bool has_name_of_its_own(const DataType* sort) {
  switch (sort->kind()) {
    case DataType::Kind::boolean:
    case DataType::Kind::integer:
    case DataType::Kind::real:
    case DataType::Kind::bit_vector:
    case DataType::Kind::array:
      return true;
    case DataType::Kind::uninterpreted:
    case DataType::Kind::function:
      break;
  }
  return false;
}

}  // namespace

std::string SmtLibTermPrinter::to_smtlib(const DataType* sort) {
  return kept_sort_text(sort);
}

const std::string& SmtLibTermPrinter::kept_sort_text(const DataType* sort) {
  if (type_names_stale_) {
    refresh_type_names();
  }
  return sort_text(sort);
}

// The place for the text of a sort. Those that are known stay when memory ends.
std::string& SmtLibTermPrinter::text_of(const DataType* sort) {
  type_names.make_room();
  return type_names[sort];
}

// NOLINTNEXTLINE(misc-no-recursion): a function type has no function types in it
const std::string& SmtLibTermPrinter::sort_text(const DataType* sort) {
  if (const auto known = type_names.find(sort); known != type_names.end()) {
    return known->second;
  }
  std::string text = v1_format ? v1_sort_text(sort) : v2_sort_text(sort, true);
  return text_of(sort) = std::move(text);
}

// NOLINTNEXTLINE(misc-no-recursion): a function type has no function types in it
std::string SmtLibTermPrinter::v1_sort_text(const DataType* sort) {
  switch (sort->kind()) {
    case DataType::Kind::boolean:
      throw error("SMT-LIB v1 format doesn't have an explicit Bool type");
    case DataType::Kind::function:
      return v1_function_text(sort);
    case DataType::Kind::array:
      return v1_array_text(sort);
    case DataType::Kind::bit_vector:
      return concat({"BitVec[", std::to_string(sort->width()), "]"});
    case DataType::Kind::integer:
    case DataType::Kind::real:
    case DataType::Kind::uninterpreted:
      break;
  }
  return "";
}

// The argument sorts, a blank after each, then the result sort. A predicate has no result sort in
// version 1.2, so its text ends with the blank.
// NOLINTNEXTLINE(misc-no-recursion): a function type has no function types in it
std::string SmtLibTermPrinter::v1_function_text(const DataType* sort) {
  std::string text;
  for (std::size_t i = 1; i < sort->num_components(); ++i) {
    text += sort_text(sort->get_component(i));
    text += ' ';
  }
  if (sort->get_component(0) != mgr->get_bool_type()) {
    text += sort_text(sort->get_component(0));
  }
  return text;
}

std::string SmtLibTermPrinter::v1_array_text(const DataType* sort) const {
  const DataType* index = sort->get_component(0);
  const DataType* element = sort->get_component(1);
  if (index == mgr->get_int_type() && element == mgr->get_int_type()) {
    return "Array";
  }
  std::size_t index_width = 0;
  std::size_t element_width = 0;
  if (!TermManager::is_bv_type(index, &index_width)) {
    throw error("unsupported index type for Array: " + index->to_short_str());
  }
  if (!TermManager::is_bv_type(element, &element_width)) {
    // The message names the index sort, as users of this printer know it.
    throw error("unsupported element type for Array: " + index->to_short_str());
  }
  return concat({"Array[", std::to_string(index_width), ":", std::to_string(element_width), "]"});
}

// Written from front to back without recursion: array sorts may be nested to any depth. With
// `trust_kept_arrays` the kept text of an array sort is used and that of a new one kept.
std::string SmtLibTermPrinter::v2_sort_text(const DataType* sort, bool trust_kept_arrays) {
  std::string text;
  std::vector<OpenArray> open;
  for (const DataType* next = sort;;) {
    const bool is_array = next->kind() == DataType::Kind::array;
    const auto known = type_names.find(next);
    if (known != type_names.end() && (trust_kept_arrays || !is_array)) {
      text += known->second;
    } else if (is_array) {
      open.push_back({next, text.size(), 0});
      text += "(Array";
    } else {
      std::string name;
      if (std::size_t width = 0; TermManager::is_bv_type(next, &width)) {
        name = concat({"(_ BitVec ", std::to_string(width), ")"});
      }
      text += name;
      text_of(next) = std::move(name);
    }
    while (!open.empty() && open.back().written == 2) {
      text += ')';
      const OpenArray& done = open.back();
      if (trust_kept_arrays && text.size() - done.begin <= longest_kept_component) {
        text_of(done.sort) = text.substr(done.begin);
      }
      open.pop_back();
    }
    if (open.empty()) {
      return text;
    }
    text += ' ';
    next = open.back().sort->get_component(open.back().written);
    ++open.back().written;
  }
}

// After a sort was renamed, the kept texts of sorts made of it are written anew, all in one pass.
void SmtLibTermPrinter::refresh_type_names() {
  std::vector<const DataType*> composites;
  for (const auto& [sort, text] : type_names) {
    if (sort->num_components() != 0) {
      composites.push_back(sort);
    }
  }
  for (const DataType* sort : composites) {
    text_of(sort) = v1_format ? v1_sort_text(sort) : v2_sort_text(sort, false);
  }
  type_names_stale_ = false;
}

void SmtLibTermPrinter::print_type_declaration(std::ostream& out, const DataType* type) {
  if (single_term || has_name_of_its_own(type)) {
    return;
  }
  std::string name = concat({"U", std::to_string(sort_counter)});
  ++sort_counter;
  const std::string line = v1_format ? concat({":extrasorts (", name, ")\n"})
                                     : concat({"(declare-sort ", name, " 0)\n"});
  write_text(out, line);
  const std::size_t known_sorts = type_names.size();
  text_of(type) = std::move(name);
  if (type_names.size() == known_sorts) {
    type_names_stale_ = true;
  }
}

void SmtLibTermPrinter::print_symbol_declaration(std::ostream& out, const Symbol* symbol) {
  if (single_term || TermManager::is_interpreted(symbol)) {
    return;
  }
  const auto write = [&](const auto&... parts) { write_parts(out, piece_memory, parts...); };
  if (v1_format) {
    if (symbol->get_output_type() == mgr->get_bool_type()) {
      write(":extrapreds ((", name_of(symbol));
    } else {
      write(":extrafuns ((", name_of(symbol));
    }
    // Where the sort is refused, that is all that is written.
    if (symbol->type != mgr->get_bool_type()) {
      write(" ", kept_sort_text(symbol->type));
    }
    write("))\n");
    return;
  }
  std::string arguments;
  for (std::size_t i = 1; i <= symbol->arity; ++i) {
    arguments += i == 1 ? "" : " ";
    arguments += kept_sort_text(symbol->type->get_component(i));
  }
  write("(declare-fun ", name_of(symbol), " (", arguments, ") ",
        kept_sort_text(symbol->get_output_type()), ")\n");
}

}  // namespace brum
