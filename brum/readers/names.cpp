#include "brum/readers/names.h"

#include <array>
#include <utility>

#include "brum/utils/smtlib_words.h"

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

// A command that came after version 2.6.
constexpr std::string_view later_word = "declare-sort-parameter";

}  // namespace

NameTable::NameTable() {
  for (const std::string_view text : smtlib2_reserved_words)
    get(text).reserved = ReservedWord::other;
  get(later_word).reserved = ReservedWord::other;
  for (const auto& [text, word] : words_with_a_part)
    get(text).reserved = word;
  for (const Operator& op : smtlib2_operators())
    get(op.name).theory_operator = &op;
}

}  // namespace brum
