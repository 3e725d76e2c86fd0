#include "destination.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <system_error>

#include "io_error.h"

namespace brum::tools {

namespace {

namespace fs = std::filesystem;

/// The number of the open descriptor that `link` stands for. To follow the link would open the file
/// anew: at its beginning, where others write to it, too.
std::optional<int> descriptor_of(const fs::path& link) {
  std::error_code failure;
  const fs::path descriptors = fs::canonical("/proc/self/fd", failure);
  if (failure || resolved(link.parent_path()) != descriptors) {
    return std::nullopt;
  }
  const std::string number = link.filename().string();
  int descriptor = -1;
  std::from_chars(number.data(), number.data() + number.size(), descriptor);
  return descriptor;
}

/// What the system knows of a destination, nothing where there is no such file yet.
std::optional<struct stat> facts_of(const Destination& destination) {
  struct stat facts {};
  const bool known = destination.descriptor ? ::fstat(*destination.descriptor, &facts) == 0
                                            : ::stat(destination.place.c_str(), &facts) == 0;
  return known ? std::optional(facts) : std::nullopt;
}

}  // namespace

Destination::Destination(const std::string& path) : name(path), place(path) {
  if (path.empty()) {
    name = "standard output";
    descriptor = STDOUT_FILENO;
    return;
  }
  constexpr int most_links = 40;
  std::error_code failure;
  for (int links = 0; fs::is_symlink(place, failure); ++links) {
    descriptor = descriptor_of(place);
    if (descriptor) {
      return;
    }
    if (links == most_links) {
      throw IoError("cannot write " + name + ": " + std::generic_category().message(ELOOP));
    }
    place = place.parent_path() / fs::read_symlink(place, failure);
  }
}

bool share_a_file(const Destination& a, const Destination& b) {
  if (a.descriptor && b.descriptor) {
    return false;
  }
  const auto facts_a = facts_of(a);
  const auto facts_b = facts_of(b);
  if (facts_a && facts_b) {
    return S_ISREG(facts_a->st_mode) && facts_a->st_dev == facts_b->st_dev &&
           facts_a->st_ino == facts_b->st_ino;
  }
  return !facts_a && !facts_b && resolved(a.place) == resolved(b.place);
}

fs::path resolved(const fs::path& path) {
  std::error_code failure;
  const fs::path whole = fs::absolute(path.empty() ? "." : path, failure);
  const fs::path result = fs::weakly_canonical(whole, failure);
  return failure ? whole : result;
}

}  // namespace brum::tools
