#include "brum/readers/logic_name.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brum::testing {

TEST(LogicName, IsTakenApartAndPutTogetherAgain) {
  for (const char* name :
       {"QF_AX",      "QF_BV",       "QF_ABV",     "QF_AUFBV",    "QF_UFBV",  "QF_UF",
        "QF_IDL",     "QF_RDL",      "QF_UFIDL",   "QF_LIA",      "QF_LRA",   "QF_LIRA",
        "QF_NIA",     "QF_NRA",      "QF_NIRA",    "QF_UFLIA",    "QF_UFLRA", "QF_UFNRA",
        "QF_ALIA",    "QF_AUFLIA",   "QF_AUFLIRA", "QF_AUFBVLIA", "QF_NRAT",  "QF_SLIA",
        "QF_UFDTLIA", "QF_ABVFPLRA", "LIA",        "AUFNIRA",     "UF"}) {
    const auto features = features_of_logic(name);
    ASSERT_TRUE(features.has_value()) << name;
    EXPECT_EQ(logic_with(*features), name);
  }
}

TEST(LogicName, SaysWhatItAllows) {
  const LogicFeatures expected{.arrays = true,
                               .functions = true,
                               .integers = true,
                               .reals = true,
                               .beyond_difference = true};
  EXPECT_EQ(features_of_logic("QF_AUFLIRA"), expected);
}

TEST(LogicName, OtherNamesSayNothing) {
  for (const char* name : {"", "ALL", "QF_", "QF_XYZ", "QF_LXA", "HORN", "QF_LIAX"}) {
    EXPECT_FALSE(features_of_logic(name).has_value()) << name;
  }
}

TEST(LogicName, GrowsByWhatRewritingAdds) {
  const LogicFeatures reals{.reals = true, .beyond_difference = true};
  const LogicFeatures product{.functions = true, .beyond_difference = true, .beyond_linear = true};
  const LogicFeatures numbering{.functions = true, .integers = true, .beyond_difference = true};
  const LogicFeatures sum{.beyond_difference = true};
  struct Row {
    const char* stated;
    LogicFeatures added;
    const char* result;
  };
  const std::vector<Row> rows{
      {"QF_LIA", {}, "QF_LIA"},
      {"QF_LIA", reals, "QF_LIRA"},
      {"QF_NIA", reals, "QF_NIRA"},
      {"QF_UFLIA", reals, "QF_UFLIRA"},
      {"QF_AUFLIRA", reals, "QF_AUFLIRA"},
      {"QF_NRA", product, "QF_UFNRA"},
      {"QF_UFNRA", product, "QF_UFNRA"},
      {"QF_LRA", product, "QF_UFNRA"},
      {"QF_IDL", sum, "QF_LIA"},
      {"QF_RDL", sum, "QF_LRA"},
      {"QF_UFIDL", sum, "QF_UFLIA"},
      {"QF_BV", sum, "QF_BV"},
      {"QF_UF", numbering, "QF_UFLIA"},
      {"QF_AX", numbering, "QF_AUFLIA"},
      {"ALL", product, "ALL"},
      {"", product, ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(logic_for(row.stated, row.added), row.result) << row.stated;
  }
}

TEST(LogicName, TellsWhereNumeralsAreReal) {
  for (const char* name : {"QF_LRA", "QF_NRA", "QF_RDL", "QF_UFLRA", "LRA", "QF_UFNRA"}) {
    EXPECT_TRUE(numerals_are_real(name)) << name;
  }
  for (const char* name : {"QF_LIA", "QF_LIRA", "AUFLIRA", "QF_UF", "QF_BV", "ALL", ""}) {
    EXPECT_FALSE(numerals_are_real(name)) << name;
  }
}

}  // namespace brum::testing
