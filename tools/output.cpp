#include "output.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>
#include <utility>

#include "doomed_files.h"

namespace brum::tools {

namespace {

std::string reason() {
  return std::generic_category().message(errno);
}

/// Gives whether all of the text was written.
bool write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno != EINTR) {
      return false;
    }
    text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
  }
  return true;
}

}  // namespace

Output::Output(Destination destination) : destination_(std::move(destination)) {
  if (destination_.descriptor) {
    if (::fcntl(*destination_.descriptor, F_GETFD) < 0) {
      refuse(reason());
    }
    return;
  }
  struct stat old {};
  const bool exists = ::stat(destination_.place.c_str(), &old) == 0;
  if (!exists && errno != ENOENT) {
    refuse(reason());
  }
  if (exists && S_ISDIR(old.st_mode)) {
    refuse("it is a folder");
  }
  if (exists && !S_ISREG(old.st_mode)) {
    open_device();
  } else {
    open_temporary(exists ? &old : nullptr);
  }
}

Output::~Output() {
  if (device_ >= 0) {
    ::close(device_);
  }
  if (!temporary_.empty()) {
    remove_temporary();
  }
}

void Output::refuse(const std::string& why) const {
  throw IoError("cannot write " + destination_.name + ": " + why);
}

/// Devices and pipes are written in place: there is nothing to move.
void Output::open_device() {
  device_ = ::open(destination_.place.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
  if (device_ < 0) {
    refuse(reason());
  }
  destination_.descriptor = device_;
}

void Output::open_temporary(const struct stat* old) {
  std::string name = (destination_.place.parent_path() / ".brumlin-XXXXXX").string();
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) {
    refuse(reason());
  }
  temporary_ = std::move(name);
  doom_file(temporary_.c_str());
  // mkstemp makes files that only their owner reads; a new file gets the usual permissions, a
  // replaced one keeps its own.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  const mode_t permissions = old != nullptr ? (old->st_mode & 07777U) : (0666U & ~mask);
  const bool ready = ::fchmod(descriptor, permissions) == 0;
  ::close(descriptor);
  file_.open(temporary_, std::ios::binary);
  if (!ready || !file_) {
    const std::string why = reason();
    remove_temporary();
    refuse(why);
  }
}

void Output::remove_temporary() {
  ::unlink(temporary_.c_str());
  spare_file(temporary_.c_str());
}

std::ostream& Output::stream() {
  if (destination_.descriptor) {
    return text_;
  }
  return file_;
}

std::size_t Output::finish() {
  if (destination_.descriptor) {
    const std::string_view text = text_.text();
    if (!write_all(*destination_.descriptor, text)) {
      refuse(reason());
    }
    return text.size();
  }
  const auto size = file_.tellp();
  errno = 0;
  file_.close();
  if (!file_ || size < 0) {
    refuse(errno == 0 ? "the write failed" : reason());
  }
  return static_cast<std::size_t>(size);
}

void Output::commit() {
  if (temporary_.empty()) {
    return;
  }
  if (std::rename(temporary_.c_str(), destination_.place.c_str()) != 0) {
    refuse(reason());
  }
  spare_file(temporary_.c_str());
  temporary_.clear();
}

}  // namespace brum::tools
