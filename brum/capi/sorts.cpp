#include "brum/capi/sorts.h"

#include "brum/capi/handles.h"

using namespace brum::capi;
using brum::DataType;
using brum::TermManager;

const brum_sort* brum_bool_sort(brum_manager* manager) noexcept {
  return build(manager, [](const TermManager& terms) { return terms.get_bool_type(); });
}

const brum_sort* brum_int_sort(brum_manager* manager) noexcept {
  return build(manager, [](const TermManager& terms) { return terms.get_int_type(); });
}

const brum_sort* brum_real_sort(brum_manager* manager) noexcept {
  return build(manager, [](const TermManager& terms) { return terms.get_real_type(); });
}

const brum_sort* brum_bv_sort(brum_manager* manager, size_t width) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_bv_type(width); });
}

const brum_sort* brum_array_sort(brum_manager* manager, const brum_sort* index,
                                 const brum_sort* element) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_array_type(require(index), require(element));
  });
}

const brum_sort* brum_uninterpreted_sort(brum_manager* manager, const char* name) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_uninterpreted_type(require(name)); });
}

const brum_sort* brum_function_sort(brum_manager* manager, const brum_sort* const* arguments,
                                    size_t count, const brum_sort* result) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_function_type(require_all<DataType>(arguments, count), require(result));
  });
}

brum_sort_kind brum_sort_get_kind(const brum_sort* sort) noexcept {
  if (sort == nullptr) {
    return BRUM_SORT_NONE;
  }
  switch (object(sort)->kind()) {
    case DataType::Kind::boolean:
      return BRUM_SORT_BOOL;
    case DataType::Kind::integer:
      return BRUM_SORT_INT;
    case DataType::Kind::real:
      return BRUM_SORT_REAL;
    case DataType::Kind::bit_vector:
      return BRUM_SORT_BIT_VECTOR;
    case DataType::Kind::array:
      return BRUM_SORT_ARRAY;
    case DataType::Kind::uninterpreted:
      return BRUM_SORT_UNINTERPRETED;
    case DataType::Kind::function:
      break;
  }
  return BRUM_SORT_FUNCTION;
}

size_t brum_sort_width(const brum_sort* sort) noexcept {
  return sort == nullptr ? 0 : object(sort)->width();
}

size_t brum_sort_num_components(const brum_sort* sort) noexcept {
  return sort == nullptr ? 0 : object(sort)->num_components();
}

const brum_sort* brum_sort_component(const brum_sort* sort, size_t i) noexcept {
  return i < brum_sort_num_components(sort) ? handle(object(sort)->get_component(i)) : nullptr;
}

brum_status brum_sort_text(const brum_sort* sort, brum_buffer* buffer) noexcept {
  return perform([&] {
    if (buffer == nullptr) {
      throw NullArgument("the buffer is null");
    }
    buffer->text += require(sort)->to_str();
  });
}

const brum_symbol* brum_declare(brum_manager* manager, const char* name,
                                const brum_sort* sort) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.declare(require(name), require(sort)); });
}

const char* brum_symbol_name(const brum_symbol* symbol) noexcept {
  return symbol == nullptr ? "" : object(symbol)->name;
}

size_t brum_symbol_arity(const brum_symbol* symbol) noexcept {
  return symbol == nullptr ? 0 : object(symbol)->arity;
}

const brum_sort* brum_symbol_sort(const brum_symbol* symbol) noexcept {
  return symbol == nullptr ? nullptr : handle(object(symbol)->type);
}

int brum_symbol_is_interpreted(const brum_symbol* symbol) noexcept {
  return symbol != nullptr && TermManager::is_interpreted(object(symbol)) ? 1 : 0;
}
