#include "output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "doomed_files.h"

namespace brum::tools {

namespace {

std::string reason() {
  return std::generic_category().message(errno);
}

[[noreturn]] void error_writing(const std::string& path, const std::string& why) {
  throw IoError("cannot write " + path + ": " + why);
}

/// The file behind a chain of links, so that a link stays a link. The file need not exist.
std::filesystem::path behind_links(const std::string& path) {
  constexpr int most_links = 40;
  std::filesystem::path place = path;
  std::error_code failure;
  for (int links = 0; std::filesystem::is_symlink(place, failure); ++links) {
    if (links == most_links) {
      error_writing(path, std::generic_category().message(ELOOP));
    }
    place = place.parent_path() / std::filesystem::read_symlink(place, failure);
  }
  return place;
}

}  // namespace

Output::Output(std::string path) : path_(std::move(path)) {
  if (!is_file()) {
    return;
  }
  struct stat old {};
  const bool exists = ::stat(path_.c_str(), &old) == 0;
  if (!exists && errno != ENOENT) {
    error_writing(path_, reason());
  }
  if (exists && S_ISDIR(old.st_mode)) {
    error_writing(path_, "it is a folder");
  }
  if (exists && !S_ISREG(old.st_mode)) {
    // Devices and pipes are written in place: there is nothing to move.
    file_.open(path_, std::ios::binary);
    if (!file_) {
      error_writing(path_, reason());
    }
    return;
  }
  const std::filesystem::path place = behind_links(path_);
  path_ = place.string();
  std::string name = (place.parent_path() / ".brumlin-XXXXXX").string();
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) {
    error_writing(path_, reason());
  }
  temporary_ = std::move(name);
  doom_file(temporary_.c_str());
  // mkstemp makes files that only their owner reads; a new file gets the usual permissions, a
  // replaced one keeps its own.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  const mode_t permissions = exists ? (old.st_mode & 07777U) : (0666U & ~mask);
  const bool ready = ::fchmod(descriptor, permissions) == 0;
  ::close(descriptor);
  file_.open(temporary_, std::ios::binary);
  if (!ready || !file_) {
    const std::string why = reason();
    remove_temporary();
    error_writing(path_, why);
  }
}

Output::~Output() {
  if (!temporary_.empty()) {
    remove_temporary();
  }
}

void Output::remove_temporary() {
  ::unlink(temporary_.c_str());
  spare_file(temporary_.c_str());
}

std::ostream& Output::stream() {
  if (is_file()) {
    return file_;
  }
  return text_;
}

std::size_t Output::commit() {
  if (!is_file()) {
    const std::string_view text = text_.text();
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!written || std::fflush(stdout) != 0) {
      throw IoError("cannot write standard output: " + reason());
    }
    return text.size();
  }
  const auto size = file_.tellp();
  errno = 0;
  file_.close();
  if (!file_ || size < 0) {
    error_writing(path_, errno == 0 ? "the write failed" : reason());
  }
  if (!temporary_.empty()) {
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) {
      error_writing(path_, reason());
    }
    spare_file(temporary_.c_str());
    temporary_.clear();
  }
  return static_cast<std::size_t>(size);
}

}  // namespace brum::tools
