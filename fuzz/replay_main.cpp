// The main of a fuzz target that is built without libFuzzer: gives the target each file named on
// the command line, and each file of a directory named there, once.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (!in) {
    throw std::runtime_error("cannot read " + path.string());
  }
  // A copy of the very length, so that a sanitizer sees what is read behind the end.
  const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
  std::cout << path.string() << ", " << input.size() << " bytes" << std::endl;
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
      if (!std::filesystem::is_directory(argv[i])) {
        replay(argv[i]);
        ++replayed;
        continue;
      }
      for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
        if (entry.is_regular_file()) {
          replay(entry.path());
          ++replayed;
        }
      }
    }
    std::cout << replayed << " files replayed\n";
    return replayed == 0 ? 2 : 0;
  } catch (const std::exception& error) {
    std::cerr << "replay: " << error.what() << '\n';
    return 1;
  }
}
