#include "brum/terms/sort_checks.h"

#include <string>

#include "brum/terms/term_manager.h"

namespace brum {

void refuse_null(std::string_view builder) {
  throw TermManager::error(std::string(builder) + ": an argument is null, expected a term");
}

void refuse_sort(std::string_view builder, const Term* term, const DataType* wanted) {
  refuse_sort(builder, term, wanted->to_short_str());
}

void refuse_sort(std::string_view builder, const Term* term, std::string_view wanted) {
  throw TermManager::error(std::string(builder) + ": an argument has sort " +
                           term->sort()->to_short_str() + ", expected " + std::string(wanted));
}

}  // namespace brum
