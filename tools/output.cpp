#include "output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace brum::tools {

namespace {

std::string reason() {
  return std::generic_category().message(errno);
}

/// The file behind a chain of links, so that a link stays a link.
std::string resolved(const std::string& path) {
  std::error_code ignored;
  const auto target = std::filesystem::weakly_canonical(path, ignored);
  return ignored ? path : target.string();
}

/// Devices and pipes are written in place: there is nothing to move.
bool is_regular_or_new(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) != 0 || S_ISREG(facts.st_mode);
}

}  // namespace

Output::Output(std::string path) : path_(std::move(path)) {
  if (!is_file()) {
    return;
  }
  if (std::filesystem::is_directory(path_)) {
    throw IoError("cannot write " + path_ + ": it is a folder");
  }
  if (!is_regular_or_new(path_)) {
    file_.open(path_, std::ios::binary);
    if (!file_) {
      throw IoError("cannot write " + path_ + ": " + reason());
    }
    return;
  }
  path_ = resolved(path_);
  std::string name = path_ + ".XXXXXX";
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) {
    throw IoError("cannot write " + path_ + ": " + reason());
  }
  temporary_ = name;
  // mkstemp makes files that only their owner reads; a new file gets the usual permissions, a
  // replaced one keeps its own.
  struct stat old {};
  const mode_t mask = ::umask(0);
  ::umask(mask);
  const bool exists = ::stat(path_.c_str(), &old) == 0;
  const mode_t permissions = exists ? (old.st_mode & 07777U) : (0666U & ~mask);
  const bool ready = ::fchmod(descriptor, permissions) == 0;
  ::close(descriptor);
  file_.open(temporary_, std::ios::binary);
  if (!ready || !file_) {
    const std::string why = reason();
    ::unlink(temporary_.c_str());
    throw IoError("cannot write " + path_ + ": " + why);
  }
}

Output::~Output() {
  if (!temporary_.empty()) {
    ::unlink(temporary_.c_str());
  }
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
    throw IoError("cannot write " + path_ + ": " + (errno == 0 ? "the write failed" : reason()));
  }
  if (!temporary_.empty()) {
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) {
      throw IoError("cannot write " + path_ + ": " + reason());
    }
    temporary_.clear();
  }
  return static_cast<std::size_t>(size);
}

}  // namespace brum::tools
