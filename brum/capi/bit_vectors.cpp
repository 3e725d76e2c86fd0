#include "brum/capi/bit_vectors.h"

#include "brum/capi/handles.h"
#include "brum/numbers/qnumber.h"

using namespace brum::capi;
using brum::QNumber;
using brum::TermManager;

const brum_term* brum_bv_number(brum_manager* manager, uint64_t value, size_t width) noexcept {
  return build(manager, [&](TermManager& terms) {
    const QNumber number = QNumber::from_string(std::to_string(value));
    return terms.make_bv_number(number, width);
  });
}

const brum_term* brum_bv_number_text(brum_manager* manager, const char* text,
                                     size_t width) noexcept {
  return build(manager, [&](TermManager& terms) {
    return terms.make_bv_number(QNumber::from_string(require(text)), width);
  });
}

const brum_term* brum_bvnot(brum_manager* manager, const brum_term* a) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_bvnot(require(a)); });
}

const brum_term* brum_bvneg(brum_manager* manager, const brum_term* a) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_bvneg(require(a)); });
}

const brum_term* brum_bvand(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvand(require(a), require(b)); });
}

const brum_term* brum_bvor(brum_manager* manager, const brum_term* a, const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvor(require(a), require(b)); });
}

const brum_term* brum_bvxor(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvxor(require(a), require(b)); });
}

const brum_term* brum_bvadd(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvadd(require(a), require(b)); });
}

const brum_term* brum_bvsub(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvsub(require(a), require(b)); });
}

const brum_term* brum_bvmul(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvmul(require(a), require(b)); });
}

const brum_term* brum_bvudiv(brum_manager* manager, const brum_term* a,
                             const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvudiv(require(a), require(b)); });
}

const brum_term* brum_bvsdiv(brum_manager* manager, const brum_term* a,
                             const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvsdiv(require(a), require(b)); });
}

const brum_term* brum_bvurem(brum_manager* manager, const brum_term* a,
                             const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvurem(require(a), require(b)); });
}

const brum_term* brum_bvsrem(brum_manager* manager, const brum_term* a,
                             const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvsrem(require(a), require(b)); });
}

const brum_term* brum_bvshl(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvshl(require(a), require(b)); });
}

const brum_term* brum_bvlshr(brum_manager* manager, const brum_term* a,
                             const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvlshr(require(a), require(b)); });
}

const brum_term* brum_bvashr(brum_manager* manager, const brum_term* a,
                             const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvashr(require(a), require(b)); });
}

const brum_term* brum_bvult(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvult(require(a), require(b)); });
}

const brum_term* brum_bvslt(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvslt(require(a), require(b)); });
}

const brum_term* brum_bvule(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvule(require(a), require(b)); });
}

const brum_term* brum_bvsle(brum_manager* manager, const brum_term* a,
                            const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvsle(require(a), require(b)); });
}

const brum_term* brum_bvcomp(brum_manager* manager, const brum_term* a,
                             const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_bvcomp(require(a), require(b)); });
}

const brum_term* brum_concat(brum_manager* manager, const brum_term* a,
                             const brum_term* b) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_concat(require(a), require(b)); });
}

const brum_term* brum_extract(brum_manager* manager, size_t msb, size_t lsb,
                              const brum_term* a) noexcept {
  return build(manager,
               [&](TermManager& terms) { return terms.make_extract(msb, lsb, require(a)); });
}

const brum_term* brum_rotate_left(brum_manager* manager, size_t n, const brum_term* a) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_rotate_left(n, require(a)); });
}

const brum_term* brum_rotate_right(brum_manager* manager, size_t n, const brum_term* a) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_rotate_right(n, require(a)); });
}

const brum_term* brum_zero_extend(brum_manager* manager, size_t n, const brum_term* a) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_zero_extend(n, require(a)); });
}

const brum_term* brum_sign_extend(brum_manager* manager, size_t n, const brum_term* a) noexcept {
  return build(manager, [&](TermManager& terms) { return terms.make_sign_extend(n, require(a)); });
}
