#include "brum/capi/terms.h"

#include "brum/capi/handles.h"
#include "brum/numbers/qnumber.h"

using namespace brum::capi;
using brum::QNumber;
using brum::Term;
using brum::TermManager;

const brum_term* brum_constant(brum_manager* manager, const char* name,
                               const brum_sort* sort) noexcept {
  return build(manager, [&](TermManager& terms) {
    const brum::DataType* type = require(sort);
    if (type->kind() == brum::DataType::Kind::function) {
      throw TermManager::error("constant: the sort is a function type");
    }
    const brum::Symbol* symbol = terms.declare(require(name), type);
    return terms.make_term(symbol);
  });
}

const brum_term* brum_apply(brum_manager* manager, const brum_symbol* symbol,
                            const brum_term* const* arguments, size_t count) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_term(require(symbol), require_all<Term>(arguments, count));
  });
}

const brum_term* brum_true(brum_manager* manager) noexcept {
  return build(manager, [](TermManager& terms) { return terms.make_true(); });
}

const brum_term* brum_false(brum_manager* manager) noexcept {
  return build(manager, [](TermManager& terms) { return terms.make_false(); });
}

const brum_term* brum_not(brum_manager* manager, const brum_term* a) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_not(require(a)); });
}

const brum_term* brum_and(brum_manager* manager, const brum_term* a, const brum_term* b) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_and(require(a), require(b)); });
}

const brum_term* brum_or(brum_manager* manager, const brum_term* a, const brum_term* b) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_or(require(a), require(b)); });
}

const brum_term* brum_iff(brum_manager* manager, const brum_term* a, const brum_term* b) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_iff(require(a), require(b)); });
}

const brum_term* brum_equal(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_equal(require(a), require(b)); });
}

const brum_term* brum_ite(brum_manager* manager, const brum_term* condition,
                          const brum_term* then_term, const brum_term* else_term) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_ite(require(condition), require(then_term), require(else_term));
  });
}

const brum_term* brum_number(brum_manager* manager, int64_t value) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_number(QNumber(value)); });
}

const brum_term* brum_number_text(brum_manager* manager, const char* text) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_number(QNumber::from_string(require(text)));
  });
}

const brum_term* brum_number_of_sort(brum_manager* manager, const char* text,
                                     const brum_sort* sort) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_number(QNumber::from_string(require(text)), require(sort));
  });
}

const brum_term* brum_plus(brum_manager* manager, const brum_term* a, const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_plus(require(a), require(b)); });
}

const brum_term* brum_times(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_times(require(a), require(b)); });
}

const brum_term* brum_leq(brum_manager* manager, const brum_term* a, const brum_term* b) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_leq(require(a), require(b)); });
}

const brum_term* brum_floor(brum_manager* manager, const brum_term* a) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_floor(require(a)); });
}

const brum_term* brum_congruent(brum_manager* manager, const char* modulus, const brum_term* a,
                                const brum_term* b) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_int_modular_congruence(QNumber::from_string(require(modulus)), require(a),
                                             require(b));
  });
}

const brum_term* brum_select(brum_manager* manager, const brum_term* array,
                             const brum_term* index) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_select(require(array), require(index));
  });
}

const brum_term* brum_store(brum_manager* manager, const brum_term* array, const brum_term* index,
                            const brum_term* element) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_store(require(array), require(index), require(element));
  });
}

uint64_t brum_term_id(const brum_term* term) noexcept {
  return term == nullptr ? 0 : object(term)->id;
}

const brum_symbol* brum_term_symbol(const brum_term* term) noexcept {
  return term == nullptr ? nullptr : handle(object(term)->symbol);
}

const brum_sort* brum_term_sort(const brum_term* term) noexcept {
  return term == nullptr ? nullptr : handle(object(term)->sort());
}

size_t brum_term_num_arguments(const brum_term* term) noexcept {
  return term == nullptr ? 0 : object(term)->symbol->arity;
}

const brum_term* brum_term_argument(const brum_term* term, size_t i) noexcept {
  return i < brum_term_num_arguments(term) ? handle(object(term)->arguments()[i]) : nullptr;
}
