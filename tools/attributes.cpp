#include "attributes.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "brum/terms/term_manager.h"
#include "brum/utils/concat.h"

namespace brum::tools {

namespace {

using namespace std::literals;

/// Attributes that some solver gives a meaning to, and refuses where it has none.
constexpr std::array solver_keywords = {
    "pattern"sv,  "no-pattern"sv, "weight"sv, "qid"sv,
    "skolemid"sv, "lblpos"sv,     "lblneg"sv, "quant-inst-max-level"sv,
};

/// Gives why an attribute other than a name cannot be kept, empty if it can.
std::string_view objection(std::string_view keyword, std::string_view value) {
  if (std::find(solver_keywords.begin(), solver_keywords.end(), keyword) != solver_keywords.end()) {
    return "solvers take it in quantifiers only";
  }
  if (value.empty()) {
    return "solvers want a value";
  }
  return value.front() == '(' ? "solvers want a plain value" : "";
}

}  // namespace

FreeNames::FreeNames(const hsh::HashSet<const Symbol*>& taken) {
  for (const Symbol* symbol : taken) {
    if (!TermManager::is_interpreted(symbol)) {
      taken_.insert(std::string(symbol->name_view()));
    }
  }
}

std::string_view symbol_name(std::string_view text) {
  const bool quoted = text.size() >= 2 && text.front() == '|' && text.back() == '|';
  return quoted ? text.substr(1, text.size() - 2) : text;
}

AnnotationMap& keep_attributes(const Script& script,
                               const std::function<bool(const Term*)>& printed_once,
                               FreeNames& names, Diagnostics& diagnostics, AnnotationMap& kept) {
  for (const auto& [term, attributes] : script.annotations) {
    const bool once = printed_once(term);
    bool named = false;
    for (const auto& [keyword, value] : attributes) {
      std::string why;
      if (!once) {
        why = "its term is not written exactly once";
      } else if (keyword != "named") {
        why = objection(keyword, value);
      } else if (named) {
        why = "its term has a name already";
      } else if (!names.take(std::string(symbol_name(value)))) {
        why = "the name is given twice or declared";
      } else {
        named = true;
      }
      if (why.empty()) {
        kept[term].emplace_back(keyword, value);
      } else {
        const char* blank = value.empty() ? "" : " ";
        diagnostics.warn(concat({"attribute :", keyword, blank, value, " is left out: ", why}));
      }
    }
  }
  return kept;
}

}  // namespace brum::tools
