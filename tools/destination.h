#ifndef BRUM_TOOLS_DESTINATION_H
#define BRUM_TOOLS_DESTINATION_H

#include <filesystem>
#include <optional>
#include <string>

namespace brum::tools {

/// What a path to write to leads to. To be found before the process opens files of its own: their
/// descriptors are none that the user means.
struct Destination {
  /// An empty path is standard output. Throws IoError for a loop of links.
  explicit Destination(const std::string& path);

  std::string name;               // in messages
  std::optional<int> descriptor;  // one that is open, as for /dev/stdout, /dev/fd/3 and >(...)
  std::filesystem::path place;    // else the file behind a chain of links, which need not exist
};

/// Whether of two texts that are written there the file at the end lacks one. Two descriptors are
/// written to one after the other, and so are devices and pipes.
bool share_a_file(const Destination& a, const Destination& b);

/// The path without links and detours, as far as it exists.
std::filesystem::path resolved(const std::filesystem::path& path);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_DESTINATION_H
