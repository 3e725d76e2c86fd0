#ifndef BRUM_TESTS_TERMS_TERM_CHECKS_H
#define BRUM_TESTS_TERMS_TERM_CHECKS_H

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "brum/terms/term_manager.h"

namespace brum::testing {

/// What a builder is to give.
struct ExpectedTerm {
  const Term* term;
  const char* symbol;
  const char* sort;
  std::vector<const Term*> arguments;
};

inline void expect_term(const ExpectedTerm& row) {
  SCOPED_TRACE(row.symbol);
  EXPECT_STREQ(row.term->symbol->name, row.symbol);
  EXPECT_EQ(row.term->symbol->get_output_type()->to_str(), row.sort);
  ASSERT_EQ(row.term->symbol->arity, row.arguments.size());
  for (std::size_t i = 0; i < row.arguments.size(); ++i) {
    EXPECT_EQ(row.term->children[i], row.arguments[i]) << "argument " << i;
  }
}

/// A call that must throw TermManager::error with this text.
struct RefusedCall {
  std::function<void()> call;
  const char* message;
};

/// Checks that each call throws with its message and leaves the terms of `mgr` alone.
inline void expect_refused(const TermManager& mgr, const std::vector<RefusedCall>& rows) {
  for (const RefusedCall& row : rows) {
    const std::size_t terms_before = mgr.num_terms();
    std::string found = "no error";
    try {
      row.call();
    } catch (const TermManager::error& refused) {
      found = refused.what();
    }
    EXPECT_EQ(found, row.message);
    EXPECT_EQ(mgr.num_terms(), terms_before) << row.message;
  }
}

}  // namespace brum::testing

#endif
