#include "brum/readers/names.h"

#include <algorithm>
#include <array>
#include <new>
#include <type_traits>
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

// What lies in an arena is not destroyed, and aligned to 8 bytes.
static_assert(std::is_trivially_destructible_v<Name> && alignof(Name) <= 8);

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

/// Makes a name, with the bytes of its text right behind it.
Name* NameTable::make(std::string_view text) {
  void* const place = arena_.allocate(sizeof(Name) + text.size());
  auto* const name = new (place) Name;
  char* const kept = static_cast<char*>(place) + sizeof(Name);
  std::copy(text.begin(), text.end(), kept);
  name->text = {kept, text.size()};
  return name;
}

}  // namespace brum
