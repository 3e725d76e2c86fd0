#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <string>

#include "brum/capi/base.h"

namespace brum::testing {

TEST(CInterfaceVersion, IsTheOneThatTheBuildStates) {
  std::ifstream in(BRUM_SOURCE_DIR "/CMakeLists.txt");
  std::ostringstream text;
  text << in.rdbuf();
  const std::string lists = text.str();
  std::smatch found;
  ASSERT_TRUE(std::regex_search(lists, found, std::regex("\n  VERSION ([0-9.]+)\n")));
  EXPECT_EQ(brum_version(), found[1].str());
}

}  // namespace brum::testing
