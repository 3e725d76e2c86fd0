#include "brum/terms/sort_checks.h"

#include <string>

#include "brum/terms/term_manager.h"

namespace brum {

namespace {

[[noreturn]] void refuse(std::string_view builder, const Term* term, const std::string& wanted) {
  throw TermManager::error(std::string(builder) + ": an argument has sort " +
                           term->sort()->to_short_str() + ", expected " + wanted);
}

}  // namespace

void require_term(std::string_view builder, const Term* term) {
  if (term == nullptr) {
    throw TermManager::error(std::string(builder) + ": an argument is null, expected a term");
  }
}

void require_sort(std::string_view builder, const Term* term, const DataType* sort) {
  require_term(builder, term);
  if (!fits(term->sort(), sort)) {
    refuse(builder, term, sort->to_short_str());
  }
}

void require_number(std::string_view builder, const Term* term) {
  require_term(builder, term);
  if (!is_number(term->sort())) {
    refuse(builder, term, "Int or Real");
  }
}

std::size_t require_bv(std::string_view builder, const Term* term) {
  require_term(builder, term);
  if (term->sort()->kind() != DataType::Kind::bit_vector) {
    refuse(builder, term, "a bit-vector");
  }
  return term->sort()->width();
}

}  // namespace brum
