#include "brum/printers/reference_texts.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "brum/terms/term_manager.h"

namespace brum {

namespace {

class ReferenceTextsTest : public ::testing::Test {
 protected:
  /// Makes `count` constants, with ids from 1 on or behind those that are there.
  std::vector<const Term*> constants(std::size_t count) {
    std::vector<const Term*> made;
    for (std::size_t i = 0; i < count; ++i) {
      const std::string name = "c" + std::to_string(manager_.num_terms());
      made.push_back(manager_.make_term(manager_.declare(name, manager_.get_int_type())));
    }
    return made;
  }

  TermManager manager_;
  ReferenceTexts texts_;
};

TEST_F(ReferenceTextsTest, AreFoundWhateverTheirLengths) {
  const std::vector<const Term*> terms = constants(300);
  texts_.expect_ids(terms.back()->id);
  for (std::size_t i = 0; i < terms.size(); ++i) {
    texts_.insert(terms[i], std::string(i, static_cast<char>('a' + i % 26)));
  }
  for (std::size_t i = 0; i < terms.size(); ++i) {
    EXPECT_EQ(texts_.get(terms[i]), std::string(i, static_cast<char>('a' + i % 26)));
  }
}

TEST_F(ReferenceTextsTest, StayWhereTheyAreWhenOthersCome) {
  const std::vector<const Term*> terms = constants(100000);
  texts_.expect_ids(terms.back()->id);
  std::vector<std::string_view> found;
  for (const Term* term : terms) {
    texts_.insert(term, std::to_string(term->id));
    found.push_back(texts_.get(term));
  }
  for (std::size_t i = 0; i < terms.size(); ++i) {
    EXPECT_EQ(found[i], std::to_string(terms[i]->id));
    EXPECT_EQ(texts_.get(terms[i]).data(), found[i].data());
  }
}

TEST_F(ReferenceTextsTest, HoldBytesOfEveryKind) {
  const std::vector<const Term*> terms = constants(2);
  texts_.expect_ids(terms.back()->id);
  const std::string short_text("\0\xFF\n|", 4);
  std::string long_text(20, '\0');
  long_text.push_back('\xFF');
  texts_.insert(terms[0], short_text);
  texts_.insert(terms[1], long_text);
  EXPECT_EQ(texts_.get(terms[0]), short_text);
  EXPECT_EQ(texts_.get(terms[1]), long_text);
}

// Of a large store only the pages with terms that have a text are made, in any order.
TEST_F(ReferenceTextsTest, OfTermsFarApartAreFound) {
  const std::vector<const Term*> terms = constants(50000);
  texts_.expect_ids(terms.back()->id);
  for (std::size_t i = terms.size(); i > 1000; i -= 1000) {
    texts_.prefetch(terms[i - 1]);
    texts_.insert(terms[i - 1], "term " + std::to_string(i));
    texts_.prefetch(terms[i - 1]);
  }
  for (std::size_t i = terms.size(); i > 1000; i -= 1000) {
    EXPECT_EQ(texts_.get(terms[i - 1]), "term " + std::to_string(i));
  }
}

}  // namespace

}  // namespace brum
