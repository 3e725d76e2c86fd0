#include "brum/terms/term_manager.h"

// The queries that read a sort or a symbol alone.

namespace brum {

bool TermManager::is_bv_type(const DataType* sort, std::size_t* width) {
  if (sort->kind() != DataType::Kind::bit_vector) {
    return false;
  }
  if (width != nullptr) {
    *width = sort->width();
  }
  return true;
}

bool TermManager::is_array_type(const DataType* sort, const DataType** index,
                                const DataType** element) {
  if (sort->kind() != DataType::Kind::array) {
    return false;
  }
  if (index != nullptr) {
    *index = sort->get_component(0);
  }
  if (element != nullptr) {
    *element = sort->get_component(1);
  }
  return true;
}

bool TermManager::is_function_type(const DataType* sort, std::vector<const DataType*>* arguments,
                                   const DataType** result) {
  if (sort->kind() != DataType::Kind::function) {
    return false;
  }
  if (arguments != nullptr) {
    arguments->clear();
    for (std::size_t i = 1; i < sort->num_components(); ++i) {
      arguments->push_back(sort->get_component(i));
    }
  }
  if (result != nullptr) {
    *result = sort->get_component(0);
  }
  return true;
}

bool TermManager::is_uninterpreted_type(const DataType* sort) {
  return sort->kind() == DataType::Kind::uninterpreted;
}

bool TermManager::is_term_ite(const Symbol* symbol, const DataType** sort) {
  if (symbol->tag_ != SymbolTag::if_then_else) {
    return false;
  }
  if (sort != nullptr) {
    *sort = symbol->get_output_type();
  }
  return true;
}

}  // namespace brum
