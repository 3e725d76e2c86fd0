#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/command.h"
#include "tests/tools/declarations.h"

// What the documents show is what happens. Of the fenced blocks of a Markdown document
//
//     ```smt2 NAME        (or text NAME) is a file for the blocks below it;
//     ```console          holds commands behind "$ ", each with what it says on both outputs;
//     ```cpp              is a program, which the build compiles and runs;
//     ```text output      is what the program before it prints, which the build compares.
//
// In the guide there are no other blocks.

namespace brum::testing {

namespace {

namespace fs = std::filesystem;

/// A fenced block of a document.
struct Block {
  std::string kind;  // the word behind the fence
  std::string name;  // what follows it
  std::string text;
  std::size_t line;  // where it begins
};

std::vector<Block> blocks_of(const fs::path& document) {
  const std::string fence = "```";
  std::vector<Block> blocks;
  bool inside = false;
  std::size_t number = 0;
  for (const std::string& line : lines_of(read_file(document))) {
    ++number;
    if (!line.starts_with(fence)) {
      if (inside) {
        blocks.back().text += line;
      }
      continue;
    }
    if (!inside) {
      const std::string info = line.substr(fence.size(), line.size() - fence.size() - 1);
      const std::size_t blank = std::min(info.find(' '), info.size());
      const std::string name = blank == info.size() ? "" : info.substr(blank + 1);
      blocks.push_back({info.substr(0, blank), name, "", number});
    }
    inside = !inside;
  }
  EXPECT_FALSE(inside) << document << ": a block is not closed";
  return blocks;
}

std::vector<fs::path> documents_in(const fs::path& folder) {
  std::vector<fs::path> documents;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".md") {
      documents.push_back(entry.path());
    }
  }
  std::sort(documents.begin(), documents.end());
  return documents;
}

std::vector<fs::path> guide() {
  return documents_in(fs::path(BRUM_SOURCE_DIR) / "docs" / "guide");
}

std::vector<fs::path> all_documents() {
  const fs::path root = BRUM_SOURCE_DIR;
  std::vector<fs::path> documents = documents_in(root / "docs");
  const std::vector<fs::path> pages = guide();
  documents.insert(documents.end(), pages.begin(), pages.end());
  documents.push_back(root / "README.md");
  return documents;
}

/// Runs the commands of a block in the folder and compares what they say.
void check_console(const TemporaryFolder& folder, const Block& block) {
  const std::string prompt = "$ ";
  std::string expected;
  std::string command;
  const auto check_command = [&] {
    const std::string path = fs::path(BRUM_COMMAND).parent_path().string();
    const Outcome outcome =
        run(Start{.words = {"sh", "-c", "exec 2>&1; export PATH=\"$0:$PATH\"; " + command, path},
                  .folder = folder.path().string()});
    EXPECT_EQ(with_sorted_declarations(outcome.out), with_sorted_declarations(expected)) << command;
  };
  for (const std::string& line : lines_of(block.text)) {
    if (line.starts_with(prompt)) {
      if (!command.empty()) {
        check_command();
      }
      command = line.substr(prompt.size());
      expected.clear();
    } else if (command.ends_with("\\\n")) {
      command += line;
    } else {
      expected += line;
    }
  }
  ASSERT_FALSE(command.empty()) << "a block of the console without a command";
  check_command();
}

void check_document(const fs::path& document) {
  const TemporaryFolder folder;
  for (const Block& block : blocks_of(document)) {
    SCOPED_TRACE(document.string() + ":" + std::to_string(block.line));
    if (block.kind == "console") {
      check_console(folder, block);
    } else if (!block.name.empty() && block.name != "output") {
      folder.write(block.name, block.text);
    }
  }
}

}  // namespace

TEST(Documentation, TheConsoleSaysWhatIsShown) {
  for (const fs::path& document : all_documents()) {
    check_document(document);
  }
}

TEST(Documentation, EveryBlockOfTheGuideIsTested) {
  const std::vector<fs::path> pages = guide();
  EXPECT_EQ(pages.size(), 5U);
  for (const fs::path& page : pages) {
    std::string previous;
    const std::vector<Block> blocks = blocks_of(page);
    EXPECT_FALSE(blocks.empty()) << page;
    for (const Block& block : blocks) {
      SCOPED_TRACE(page.string() + ":" + std::to_string(block.line));
      if (block.name == "output") {
        EXPECT_EQ(previous, "cpp") << "the output of no program";
      } else if (block.kind == "cpp") {
        EXPECT_THAT(block.text, ::testing::HasSubstr("\nint main()"));
      } else if (block.kind != "console") {
        EXPECT_NE(block.name, "") << "a block that no test looks at";
      }
      previous = block.kind;
    }
  }
}

}  // namespace brum::testing
