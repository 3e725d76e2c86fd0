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
  texts_.expect_terms(terms.size(), terms.back()->id);
  for (std::size_t i = 0; i < terms.size(); ++i) {
    texts_.insert(terms[i], std::string(i, static_cast<char>('a' + i % 26)));
  }
  for (std::size_t i = 0; i < terms.size(); ++i) {
    EXPECT_EQ(texts_.get(terms[i]), std::string(i, static_cast<char>('a' + i % 26)));
  }
}

TEST_F(ReferenceTextsTest, StayWhereTheyAreWhenOthersCome) {
  const std::vector<const Term*> terms = constants(100000);
  texts_.expect_terms(terms.size(), terms.back()->id);
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
  texts_.expect_terms(terms.size(), terms.back()->id);
  const std::string short_text("\0\xFF\n|", 4);
  std::string long_text(20, '\0');
  long_text.push_back('\xFF');
  texts_.insert(terms[0], short_text);
  texts_.insert(terms[1], long_text);
  EXPECT_EQ(texts_.get(terms[0]), short_text);
  EXPECT_EQ(texts_.get(terms[1]), long_text);
}

// In any order, on both sides of where terms count as scattered.
TEST_F(ReferenceTextsTest, OfTermsFarApartAreFound) {
  const std::vector<const Term*> terms = constants(50'000);
  for (const std::size_t step : {1'000U, 100U, 17U, 16U, 15U, 2U}) {
    ReferenceTexts texts;
    texts.expect_terms(terms.size() / step, terms.back()->id);
    for (std::size_t i = terms.size(); i > step; i -= step) {
      texts.prefetch(terms[i - 1]);
      texts.insert(terms[i - 1], "term " + std::to_string(i) + std::string(i % 20, '.'));
      texts.prefetch(terms[i - 1]);
    }
    for (std::size_t i = terms.size(); i > step; i -= step) {
      ASSERT_EQ(texts.get(terms[i - 1]), "term " + std::to_string(i) + std::string(i % 20, '.'));
    }
  }
}

TEST_F(ReferenceTextsTest, OfScatteredTermsStayWhereTheyAre) {
  const std::vector<const Term*> terms = constants(50'000);
  texts_.expect_terms(1'000, terms.back()->id);
  std::vector<std::string_view> found;
  for (std::size_t i = 0; i < terms.size(); i += 50) {
    texts_.insert(terms[i], std::to_string(i));
    found.push_back(texts_.get(terms[i]));
  }
  for (std::size_t i = 0; i < found.size(); ++i) {
    EXPECT_EQ(found[i], std::to_string(i * 50));
    EXPECT_EQ(texts_.get(terms[i * 50]).data(), found[i].data());
  }
}

}  // namespace

}  // namespace brum
