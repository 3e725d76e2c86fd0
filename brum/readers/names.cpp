#include "brum/readers/names.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace brum {

namespace {

constexpr std::array<std::pair<std::string_view, ReservedWord>, 7> words_with_a_part{{
    {"_", ReservedWord::underscore},
    {"!", ReservedWord::exclamation},
    {"as", ReservedWord::as_word},
    {"let", ReservedWord::let},
    {"forall", ReservedWord::forall},
    {"exists", ReservedWord::exists},
    {"match", ReservedWord::match},
}};

constexpr std::array<std::string_view, 38> other_words{
    "par",
    "BINARY",
    "DECIMAL",
    "HEXADECIMAL",
    "NUMERAL",
    "STRING",
    "assert",
    "check-sat",
    "check-sat-assuming",
    "declare-const",
    "declare-datatype",
    "declare-datatypes",
    "declare-fun",
    "declare-sort",
    "declare-sort-parameter",
    "define-const",
    "define-fun",
    "define-fun-rec",
    "define-funs-rec",
    "define-sort",
    "echo",
    "exit",
    "get-assertions",
    "get-assignment",
    "get-info",
    "get-model",
    "get-option",
    "get-proof",
    "get-unsat-assumptions",
    "get-unsat-core",
    "get-value",
    "pop",
    "push",
    "reset",
    "reset-assertions",
    "set-info",
    "set-logic",
    "set-option",
};

}  // namespace

NameTable::NameTable() {
  for (const auto& [text, word] : words_with_a_part)
    get(text).reserved = word;
  for (const std::string_view text : other_words)
    get(text).reserved = ReservedWord::other;
  for (const Operator& op : smtlib2_operators())
    get(op.name).theory_operator = &op;
}

Name& NameTable::get(std::string_view text) {
  NameText sought{text};
  const std::uint64_t hash = hsh::hash_bytes(text);
  if (const auto found = names_.find({hash, &sought}); found != names_.end()) {
    return static_cast<Name&>(*found->name);
  }
  void* place = arena_.allocate(sizeof(Name) + text.size());
  Name* name = new (place) Name;
  char* kept = static_cast<char*>(place) + sizeof(Name);
  std::copy(text.begin(), text.end(), kept);
  name->text = {kept, text.size()};
  names_.insert({hash, name});
  return *name;
}

}  // namespace brum
