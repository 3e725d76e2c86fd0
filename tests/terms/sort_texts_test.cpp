#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "brum/terms/term_manager.h"

namespace brum {
namespace {

/// A sort of 2^60 components when it is written out.
const DataType* make_shared_sort(TermManager& mgr) {
  const DataType* sort = mgr.get_int_type();
  for (int i = 0; i < 60; ++i)
    sort = mgr.make_array_type(sort, sort);
  return sort;
}

std::string message_of(const std::function<void()>& call) {
  try {
    call();
  } catch (const TermManager::error& refused) {
    return refused.what();
  }
  return "no error";
}

TEST(SortTexts, MessagesShowABoundedPartOfASharedSort) {
  TermManager mgr;
  const DataType* sort = make_shared_sort(mgr);
  const DataType* function = mgr.make_function_type({sort}, mgr.get_int_type());
  const DataType* other = mgr.make_array_type(mgr.get_int_type(), sort);
  const std::string text = sort->to_short_str();
  const Term* const a = mgr.make_term(mgr.declare("a", sort));
  const Term* const x = mgr.make_term(mgr.declare("x", mgr.get_int_type()));
  const Term* const u =
      mgr.make_term(mgr.declare("u", mgr.make_array_type(sort, mgr.get_int_type())));
  const Symbol* const f = mgr.declare("f", function);
  const struct {
    std::function<void()> call;
    std::string message;
  } rows[] = {
      {[&] { mgr.make_not(a); }, "not: an argument has sort " + text + ", expected Bool"},
      {[&] { mgr.make_equal(x, a); }, "=: an argument has sort " + text + ", expected Int"},
      {[&] { mgr.make_equal(a, x); }, "=: an argument has sort Int, expected " + text},
      {[&] { mgr.make_ite(mgr.make_true(), a, x); },
       "ite: an argument has sort Int, expected " + text},
      {[&] { mgr.make_select(u, x); }, "select: an argument has sort Int, expected " + text},
      {[&] { mgr.make_store(u, a, a); }, "store: an argument has sort " + text + ", expected Int"},
      {[&] { mgr.make_plus(a, x); }, "+: an argument has sort " + text + ", expected Int or Real"},
      {[&] { mgr.make_bvnot(a); },
       "bvnot: an argument has sort " + text + ", expected a bit-vector"},
      {[&] { mgr.make_term(f, {x}); }, "f: an argument has sort Int, expected " + text},
      {[&] { mgr.make_array_type(function, sort); },
       "Array: " + function->to_short_str() + " is a function type, expected a sort of terms"},
      {[&] { mgr.declare("a", other); },
       "declare: 'a' is declared with sort " + text + " already, not " + other->to_short_str()},
      {[&] { mgr.make_number(QNumber(1), sort); },
       "number: the sort is " + text + ", expected Int or Real"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(message_of(row.call), row.message);
}

}  // namespace
}  // namespace brum
