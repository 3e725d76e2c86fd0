#include "brum/printers/check_names.h"

#include <algorithm>
#include <array>
#include <utility>

#include "brum/printers/smtlib_identifiers.h"
#include "brum/terms/operator_names.h"
#include "brum/terms/term_index.h"
#include "brum/terms/term_walk.h"
#include "brum/utils/hash_containers.h"
#include "brum/utils/smtlib_words.h"

namespace brum {

namespace {

using namespace std::literals;

// Besides these, the operators of operator_names.h are theory symbols of both versions.

constexpr std::array v2_theory_symbols = {
    "true"sv,    "false"sv,   "not"sv,     "=>"sv,       "and"sv,     "or"sv,      "xor"sv,
    "-"sv,       "+"sv,       "*"sv,       "/"sv,        "div"sv,     "mod"sv,     "abs"sv,
    "<="sv,      "<"sv,       ">="sv,      ">"sv,        "to_real"sv, "to_int"sv,  "is_int"sv,
    "repeat"sv,  "bvnand"sv,  "bvnor"sv,   "bvxnor"sv,   "bvsmod"sv,  "bvuge"sv,   "bvugt"sv,
    "bvsge"sv,   "bvsgt"sv,   "bvnego"sv,  "bvuaddo"sv,  "bvsaddo"sv, "bvumulo"sv, "bvsmulo"sv,
    "bvusubo"sv, "bvssubo"sv, "bvsdivo"sv, "distinct"sv,
};

constexpr std::array v1_words = {
    "benchmark"sv, "true"sv,    "false"sv,        "not"sv,    "and"sv,    "or"sv,     "xor"sv,
    "implies"sv,   "iff"sv,     "if_then_else"sv, "let"sv,    "flet"sv,   "forall"sv, "exists"sv,
    "distinct"sv,  "Int"sv,     "Real"sv,         "Array"sv,  "BitVec"sv, "repeat"sv, "bvnand"sv,
    "bvnor"sv,     "bvxnor"sv,  "bvsmod"sv,       "bvuge"sv,  "bvugt"sv,  "bvsge"sv,  "bvsgt"sv,
    "bvgeq"sv,     "bvgt"sv,    "bvleq"sv,        "bvlt"sv,   "bvsgeq"sv, "bvsleq"sv, "bit0"sv,
    "bit1"sv,      "to_int"sv,  "to_real"sv,      "is_int"sv, "theory"sv, "logic"sv,  "sat"sv,
    "unsat"sv,     "unknown"sv,
};

/// Version 1.2 writes the bit-vector 5 as bv5[8].
bool is_v1_bit_vector_numeral(std::string_view word) {
  return word.size() > 2 && word.starts_with("bv") &&
         std::all_of(word.begin() + 2, word.end(),
                     [](char byte) { return byte >= '0' && byte <= '9'; });
}

/// The words that are looked up, in one table.
class KnownWords {
 public:
  explicit KnownWords(bool v1_format) {
    if (v1_format) {
      add(v1_words, "is a word of SMT-LIB 1.2");
    } else {
      add(v2_theory_symbols, "is a symbol of the theories of SMT-LIB 2.6");
      add(smtlib2_reserved_words, "is a reserved word of SMT-LIB 2.6");
    }
    for (const OperatorName& entry : operator_names) {
      reasons_[entry.name] = "is a symbol of the theories of SMT-LIB";
    }
  }

  /// Gives why the word is taken, empty when it is free.
  std::string_view reason(std::string_view word) const {
    const auto found = reasons_.find(word);
    return found == reasons_.end() ? std::string_view() : found->second;
  }

 private:
  template <std::size_t size>
  void add(const std::array<std::string_view, size>& words, std::string_view reason) {
    for (const std::string_view word : words) {
      reasons_[word] = reason;
    }
  }

  hsh::HashMap<std::string_view, std::string_view> reasons_;
};

/// Gives what is wrong with one name by itself, empty if nothing is.
std::string own_problem(std::string_view name, bool v1_format, const KnownWords& words) {
  if (v1_format) {
    const std::string text = v1_identifier(name);
    if (is_v1_bit_vector_numeral(text)) {
      return "is a bit-vector numeral in SMT-LIB 1.2";
    }
    return std::string(words.reason(text));
  }
  if (name.empty()) {
    return "is empty, which SMT-LIB 2.6 text does not show";
  }
  if (name.find_first_of("|\\") != std::string_view::npos) {
    return "holds a bar or a backslash, which no symbol of SMT-LIB 2.6 can";
  }
  // What needs bars gets them, and is no word then.
  return is_simple_symbol(name) ? std::string(words.reason(name)) : std::string();
}

/// The user symbols of the terms, each once, in the order in which they are met.
std::vector<const Symbol*> user_symbols(const std::vector<const Term*>& terms) {
  std::vector<const Symbol*> symbols;
  hsh::HashSet<const Symbol*> known;
  TermSet visited;
  TermWalk walk;
  for (const Term* term : terms) {
    walk.run(
        term,
        [&](const Term* met) {
          if (!visited.insert(met)) {
            return false;
          }
          if (!TermManager::is_interpreted(met->symbol) && known.insert(met->symbol).second) {
            symbols.push_back(met->symbol);
          }
          return true;
        },
        [](const Term*) {});
  }
  return symbols;
}

}  // namespace

std::vector<NameProblem> check_names(const TermManager& /*manager*/,
                                     const std::vector<const Term*>& terms, bool v1_format) {
  return check_names(user_symbols(terms), v1_format);
}

std::vector<NameProblem> check_names(const std::vector<const Symbol*>& symbols, bool v1_format) {
  const KnownWords words(v1_format);
  // Names fall together in version 1.2 only. For each text the first symbol and the last.
  hsh::HashMap<std::string, std::pair<const Symbol*, const Symbol*>> with_text;
  if (v1_format) {
    for (const Symbol* symbol : symbols) {
      auto& [first, last] = with_text[v1_identifier(symbol->name_view())];
      first = first == nullptr ? symbol : first;
      last = symbol;
    }
  }
  std::vector<NameProblem> problems;
  for (const Symbol* symbol : symbols) {
    std::string reason = own_problem(symbol->name_view(), v1_format, words);
    if (reason.empty() && v1_format) {
      const auto& [first, last] = with_text.find(v1_identifier(symbol->name_view()))->second;
      const Symbol* other = symbol == first ? last : first;
      if (other != symbol) {
        reason = "is written like '" + std::string(other->name_view()) + "'";
      }
    }
    if (!reason.empty()) {
      problems.push_back({symbol, std::move(reason)});
    }
  }
  return problems;
}

bool is_reserved_word(std::string_view name) {
  return is_among(smtlib2_reserved_words, name);
}

}  // namespace brum
