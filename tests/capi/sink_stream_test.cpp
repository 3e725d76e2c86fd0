#include "brum/capi/sink_stream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brum::testing {
namespace {

extern "C" int keep_piece(void* data, const char* bytes, size_t count) {
  static_cast<std::vector<std::string>*>(data)->emplace_back(bytes, count);
  return 0;
}

TEST(SinkStream, HandsOnPiecesOfEightKilobytes) {
  std::vector<std::string> pieces;
  capi::SinkStream out({keep_piece, &pieces});
  for (int i = 0; i < 8193; ++i) {
    out.put(i == 8192 ? 'z' : 'a');
  }
  EXPECT_EQ(pieces, std::vector<std::string>{std::string(8192, 'a')});
  out << "yx";
  out.finish();
  EXPECT_EQ(pieces, (std::vector<std::string>{std::string(8192, 'a'), "zyx"}));
  out.finish();  // with nothing to hand on, the sink is not called
  EXPECT_EQ(pieces.size(), 2U);
}

TEST(SinkStream, OneLineFeedAtTheVeryEndCanBeLeftOut) {
  std::vector<std::string> pieces;
  const auto write = [&](const std::string& text) {
    capi::SinkStream out({keep_piece, &pieces});
    out << text;
    out.finish_without_line_end();
  };
  write("a\n");
  write("b\n\n");
  write("\nc");
  write("");
  write("\n");
  EXPECT_EQ(pieces, (std::vector<std::string>{"a", "b\n", "\nc"}));
}

TEST(SinkStream, ALineFeedThatJustFillsThePieceCanBeLeftOut) {
  std::vector<std::string> pieces;
  capi::SinkStream out({keep_piece, &pieces});
  out << std::string(8191, 'a') << '\n';
  out.finish_without_line_end();
  EXPECT_EQ(pieces, std::vector<std::string>{std::string(8191, 'a')});
}

TEST(SinkStream, AFlushOfTheStreamKeepsWhatIsCollected) {
  std::vector<std::string> pieces;
  capi::SinkStream out({keep_piece, &pieces});
  out << "a" << std::flush << "\n";
  out.finish_without_line_end();
  EXPECT_EQ(pieces, std::vector<std::string>{"a"});
}

TEST(SinkStream, NeedsAFunction) {
  EXPECT_THROW(capi::SinkStream({nullptr, nullptr}), capi::NullArgument);
}

}  // namespace
}  // namespace brum::testing
