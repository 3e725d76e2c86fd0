#include <gtest/gtest.h>

#include "brum/terms/term_manager.h"
#include "tests/support/formulas.h"
#include "tests/terms/term_checks.h"

namespace brum {
namespace {

using testing::expect_refused;
using testing::expect_term;
using testing::ExpectedTerm;
using testing::make_bv;
using testing::make_int;

TEST(TermManagerBitVectors, OperationsKeepTheWidth) {
  TermManager mgr;
  const Term* a = make_bv(mgr, "a", 12);
  const Term* b = make_bv(mgr, "b", 12);
  const char* sort = "(_ BitVec 12)";
  const ExpectedTerm rows[] = {
      {mgr.make_bvnot(a), "bvnot", sort, {a}},
      {mgr.make_bvneg(a), "bvneg", sort, {a}},
      {mgr.make_bvand(a, b), "bvand", sort, {a, b}},
      {mgr.make_bvor(a, b), "bvor", sort, {a, b}},
      {mgr.make_bvxor(a, b), "bvxor", sort, {a, b}},
      {mgr.make_bvadd(a, b), "bvadd", sort, {a, b}},
      {mgr.make_bvsub(a, b), "bvsub", sort, {a, b}},
      {mgr.make_bvmul(a, b), "bvmul", sort, {a, b}},
      {mgr.make_bvudiv(a, b), "bvudiv", sort, {a, b}},
      {mgr.make_bvsdiv(a, b), "bvsdiv", sort, {a, b}},
      {mgr.make_bvurem(a, b), "bvurem", sort, {a, b}},
      {mgr.make_bvsrem(a, b), "bvsrem", sort, {a, b}},
      {mgr.make_bvshl(a, b), "bvshl", sort, {a, b}},
      {mgr.make_bvlshr(a, b), "bvlshr", sort, {a, b}},
      {mgr.make_bvashr(a, b), "bvashr", sort, {a, b}},
      {mgr.make_rotate_left(3, a), "rotate_left", sort, {a}},
      {mgr.make_rotate_left(30, a), "rotate_left", sort, {a}},
      {mgr.make_rotate_right(0, a), "rotate_right", sort, {a}},
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
}

TEST(TermManagerBitVectors, ComparisonsAreBoolAndBvcompOneBit) {
  TermManager mgr;
  const Term* a = make_bv(mgr, "a", 12);
  const Term* b = make_bv(mgr, "b", 12);
  const ExpectedTerm rows[] = {
      {mgr.make_bvult(a, b), "bvult", "Bool", {a, b}},
      {mgr.make_bvslt(a, b), "bvslt", "Bool", {a, b}},
      {mgr.make_bvule(a, b), "bvule", "Bool", {a, b}},
      {mgr.make_bvsle(a, b), "bvsle", "Bool", {a, b}},
      {mgr.make_bvcomp(a, b), "bvcomp", "(_ BitVec 1)", {a, b}},
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
}

TEST(TermManagerBitVectors, WidthsFollowFromTheIndices) {
  TermManager mgr;
  const Term* a = make_bv(mgr, "a", 12);
  const Term* b = make_bv(mgr, "b", 5);
  const ExpectedTerm rows[] = {
      {mgr.make_concat(a, b), "concat", "(_ BitVec 17)", {a, b}},
      {mgr.make_concat(b, a), "concat", "(_ BitVec 17)", {b, a}},
      {mgr.make_extract(7, 4, a), "extract", "(_ BitVec 4)", {a}},
      {mgr.make_extract(11, 0, a), "extract", "(_ BitVec 12)", {a}},
      {mgr.make_extract(11, 11, a), "extract", "(_ BitVec 1)", {a}},
      {mgr.make_zero_extend(24, a), "zero_extend", "(_ BitVec 36)", {a}},
      {mgr.make_zero_extend(0, a), "zero_extend", "(_ BitVec 12)", {a}},
      {mgr.make_sign_extend(1, b), "sign_extend", "(_ BitVec 6)", {b}},
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
}

TEST(TermManagerBitVectors, NumbersFitTheirWidth) {
  TermManager mgr;
  const ExpectedTerm rows[] = {
      {mgr.make_bv_number(0, 1), "0", "(_ BitVec 1)", {}},
      {mgr.make_bv_number(1, 1), "1", "(_ BitVec 1)", {}},
      {mgr.make_bv_number(255, 8), "255", "(_ BitVec 8)", {}},
      {mgr.make_bv_number(QNumber::from_string("18446744073709551615"), 64),
       "18446744073709551615",
       "(_ BitVec 64)",
       {}},
      {mgr.make_bv_number(QNumber::from_string("36893488147419103231"), 65),
       "36893488147419103231",
       "(_ BitVec 65)",
       {}},
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
}

TEST(TermManagerBitVectors, IllSortedCallsThrowAndChangeNothing) {
  TermManager mgr;
  const Term* a = make_bv(mgr, "a", 8);
  const Term* b = make_bv(mgr, "b", 9);
  const Term* i = make_int(mgr, "i");
  const std::size_t largest = SIZE_MAX;
  const Term* huge = make_bv(mgr, "huge", largest);
  const auto value = [](const char* digits) { return QNumber::from_string(digits); };
  expect_refused(
      mgr,
      {
          {[&] { mgr.make_bvnot(i); }, "bvnot: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_bvnot(nullptr); }, "bvnot: an argument is null, expected a term"},
          {[&] { mgr.make_bvneg(i); }, "bvneg: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_bvand(a, b); },
           "bvand: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvor(i, a); }, "bvor: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_bvxor(a, i); }, "bvxor: an argument has sort Int, expected (_ BitVec 8)"},
          {[&] { mgr.make_bvult(a, b); },
           "bvult: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvslt(b, a); },
           "bvslt: an argument has sort (_ BitVec 8), expected (_ BitVec 9)"},
          {[&] { mgr.make_bvule(nullptr, a); }, "bvule: an argument is null, expected a term"},
          {[&] { mgr.make_bvsle(a, nullptr); }, "bvsle: an argument is null, expected a term"},
          {[&] { mgr.make_bvcomp(a, b); },
           "bvcomp: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvadd(a, b); },
           "bvadd: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvsub(a, b); },
           "bvsub: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvmul(a, b); },
           "bvmul: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvudiv(a, b); },
           "bvudiv: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvsdiv(a, b); },
           "bvsdiv: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvurem(a, b); },
           "bvurem: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvsrem(a, b); },
           "bvsrem: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvshl(a, b); },
           "bvshl: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvlshr(a, b); },
           "bvlshr: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_bvashr(a, b); },
           "bvashr: an argument has sort (_ BitVec 9), expected (_ BitVec 8)"},
          {[&] { mgr.make_concat(a, i); },
           "concat: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_concat(i, a); },
           "concat: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_concat(huge, a); },
           "concat: the widths add up to 2^64 bits or more, expected fewer"},
          {[&] { mgr.make_extract(8, 0, a); },
           "extract: bits 8 to 0 of 8, expected width > high >= low"},
          {[&] { mgr.make_extract(3, 4, a); },
           "extract: bits 3 to 4 of 8, expected width > high >= low"},
          {[&] { mgr.make_extract(3, 1, i); },
           "extract: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_rotate_left(1, i); },
           "rotate_left: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_rotate_right(1, nullptr); },
           "rotate_right: an argument is null, expected a term"},
          {[&] { mgr.make_zero_extend(1, i); },
           "zero_extend: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_zero_extend(largest, a); },
           "zero_extend: the width becomes 2^64 bits or more, expected fewer"},
          {[&] { mgr.make_sign_extend(1, i); },
           "sign_extend: an argument has sort Int, expected a bit-vector"},
          {[&] { mgr.make_sign_extend(largest, a); },
           "sign_extend: the width becomes 2^64 bits or more, expected fewer"},
          {[&] { mgr.make_bv_number(0, 0); }, "BitVec: a width of 0 bits, expected at least 1"},
          {[&] { mgr.make_bv_number(-1, 8); },
           "bit-vector: the value -1 does not fit in 8 bits, expected 0 <= value < 2^width"},
          {[&] { mgr.make_bv_number(256, 8); },
           "bit-vector: the value 256 does not fit in 8 bits, expected 0 <= value < 2^width"},
          {[&] { mgr.make_bv_number(QNumber(1, 2), 8); },
           "bit-vector: the value 1/2 does not fit in 8 bits, expected 0 <= value < 2^width"},
          {[&] { mgr.make_bv_number(value("18446744073709551616"), 64); },
           "bit-vector: the value 18446744073709551616 does not fit in 64 bits, expected 0 <= "
           "value < 2^width"},
      });
}

}  // namespace
}  // namespace brum
