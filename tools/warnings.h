#ifndef BRUM_TOOLS_WARNINGS_H
#define BRUM_TOOLS_WARNINGS_H

#include <ostream>
#include <string>
#include <utility>

namespace brum::tools {

/// Tells the user what the document does not say as the input did.
class Warnings {
 public:
  /// `file` is the input's name; `out` must outlive the object.
  Warnings(std::string file, std::ostream& out) : file_(std::move(file)), out_(out) {}

  void warn(const std::string& message) { out_ << file_ << ": warning: " << message << '\n'; }

 private:
  std::string file_;
  std::ostream& out_;
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_WARNINGS_H
