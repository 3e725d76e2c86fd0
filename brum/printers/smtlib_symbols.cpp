#include <cstdint>
#include <string>

#include "brum/printers/smtlib_identifiers.h"
#include "brum/printers/smtlib_term_printer.h"
#include "brum/terms/operator_names.h"
#include "brum/utils/concat.h"

// How symbols are spelt.

namespace brum {

std::string SmtLibTermPrinter::to_smtlib(const Symbol* symbol) {
  return std::string(name_of(symbol));
}

inline const std::string* SmtLibTermPrinter::kept_name(const Symbol* symbol) {
  if (symbol->arity == 0) {
    return look_up_name(symbol);
  }
  const std::uint64_t version = symbol_names.version() + tag_names.version();
  if (version != version_of_recent_) {
    recent_names_.fill({});
    version_of_recent_ = version;
  }
  RecentName& recent = recent_names_[reinterpret_cast<std::uintptr_t>(symbol) / sizeof(Symbol) %
                                     recent_names_.size()];
  if (recent.symbol != symbol) {
    recent.text = look_up_name(symbol);
    recent.symbol = symbol;
  }
  return recent.text;
}

std::string_view SmtLibTermPrinter::name_of(const Symbol* symbol) {
  if (const std::string* const kept = kept_name(symbol); kept != nullptr) {
    return *kept;
  }
  const std::string_view name = symbol->name_view();
  if (v1_format ? is_v1_identifier(name) : is_simple_symbol(name)) {
    return name;
  }
  return quoted_name_ = to_smtlib(std::string(name));
}

const std::string* SmtLibTermPrinter::look_up_name(const Symbol* symbol) {
  if (const auto known = symbol_names.find(symbol); known != symbol_names.end()) {
    return &known->second;
  }
  const auto keep = [&](std::string text) {
    symbol_names.make_room();  // so that the known ones stay when memory ends
    const std::string& kept = symbol_names.insert_absent(symbol, std::move(text))->second;
    ++version_of_recent_;
    return &kept;
  };
  if (!TermManager::is_interpreted(symbol)) {
    return nullptr;
  }
  if (TermManager::is_numeral(symbol)) {
    return keep(numeral(symbol));
  }
  const SymbolTag::tag tag = TermManager::get_tag(symbol).value_or(SymbolTag::none);
  if (TermManager::is_equality(symbol) || TermManager::is_term_ite(symbol, nullptr)) {
    return keep(std::string(operator_name(tag).name));
  }
  if (const auto fixed = tag_names.find(tag); fixed != tag_names.end()) {
    return &fixed->second;
  }
  return keep(indexed_operator(symbol));
}

std::string SmtLibTermPrinter::numeral(const Symbol* symbol) const {
  // The symbol's name mostly spares a look at its value.
  const std::string_view digits = symbol->name_view();
  std::size_t width = 0;
  if (!TermManager::is_bv_type(symbol->type, &width)) {
    const QNumber* value = mgr->get_number(symbol);
    if (value == nullptr) {  // it is another manager's
      return indexed_operator(symbol);
    }
    const bool is_plain = digits.find_first_of("-/") == std::string_view::npos;
    return is_plain ? std::string(digits) : to_smtlib(*value);
  }
  if (v1_format) {
    return concat({"bv", digits, "[", std::to_string(width), "]"});
  }
  return concat({"(_ bv", digits, " ", std::to_string(width), ")"});
}

std::string SmtLibTermPrinter::indexed_operator(const Symbol* symbol) const {
  std::size_t first = 0;
  std::size_t second = 0;
  QNumber modulus;
  std::string indices;
  if (mgr->is_int_modular_congruence(symbol, &modulus)) {
    indices = modulus.to_str();
  } else if (mgr->is_bv_extract(symbol, &first, &second, nullptr)) {
    indices = concat({std::to_string(first), v1_format ? ":" : " ", std::to_string(second)});
  } else if (mgr->is_bv_rotate_left(symbol, &first, nullptr) ||
             mgr->is_bv_rotate_right(symbol, &first, nullptr) ||
             mgr->is_bv_zero_extend(symbol, &first, nullptr) ||
             mgr->is_bv_sign_extend(symbol, &first, nullptr)) {
    indices = std::to_string(first);
  } else {
    // The missing blank before "in" is part of the message that users know.
    throw error(
        concat({"can't print interpreted symbol ", symbol->name_view(), "in SMT-LIB format"}));
  }
  const SymbolTag::tag tag = TermManager::get_tag(symbol).value_or(SymbolTag::none);
  const std::string_view name = operator_name(tag).name;
  return v1_format ? concat({name, "[", indices, "]"}) : concat({"(_ ", name, " ", indices, ")"});
}

}  // namespace brum
