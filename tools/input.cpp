#include "input.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <string_view>
#include <system_error>
#include <utility>

#include "brum/readers/smtlib1_reader.h"
#include "brum/readers/smtlib2_reader.h"
#include "io_error.h"

namespace brum::tools {

namespace {

/// Takes a text byte by byte until its language is known.
class LanguageDetector {
 public:
  /// Gives whether the language is known now.
  bool take(char c) {
    if (in_comment_) {
      in_comment_ = c != '\n';
      return false;
    }
    const bool is_blank = c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == ';';
    if (is_blank && word_.empty()) {
      in_comment_ = c == ';';
      return false;
    }
    if (!has_bracket_) {
      has_bracket_ = c == '(';
      return !has_bracket_;
    }
    if (is_blank || c == '(' || c == ')')
      return true;
    word_ += c;
    return word_.size() > first_word.size();
  }

  Language language() const { return word_ == first_word ? Language::v1 : Language::v2; }

 private:
  static constexpr std::string_view first_word = "benchmark";

  std::string word_;  // behind the first bracket
  bool in_comment_ = false;
  bool has_bracket_ = false;
};

void read_as(Language language, const CommandLine& line, TermManager& manager, std::istream& in,
             ScriptHandler& handler) {
  ReaderOptions options;
  options.file_name = line.input_name();
  switch (language) {
    case Language::v1:
      SmtLib1Reader(manager, std::move(options)).read(in, handler);
      return;
    case Language::v2:
      SmtLib2Reader(manager, std::move(options)).read(in, handler);
      return;
  }
}

/// The size of what stands behind an open file, 0 where that is no plain file. Throws IoError for a
/// folder, reading which would look like reading an empty file.
std::size_t size_of_input(const CommandLine& line) {
  struct stat facts {};
  const bool known = line.input == "-" ? ::fstat(STDIN_FILENO, &facts) == 0
                                       : ::stat(line.input.c_str(), &facts) == 0;
  if (known && S_ISDIR(facts.st_mode)) {
    throw IoError("cannot read " + line.input_name() + ": it is a folder");
  }
  return known && S_ISREG(facts.st_mode) ? static_cast<std::size_t>(facts.st_size) : 0;
}

}  // namespace

RereadBuffer::RereadBuffer(std::string beginning, std::streambuf& rest)
    : beginning_(std::move(beginning)), block_(block_bytes), rest_(rest) {
  setg(beginning_.data(), beginning_.data(), beginning_.data() + beginning_.size());
}

RereadBuffer::int_type RereadBuffer::underflow() {
  const std::streamsize got =
      rest_.sgetn(block_.data(), static_cast<std::streamsize>(block_.size()));
  if (got <= 0)
    return traits_type::eof();
  setg(block_.data(), block_.data(), block_.data() + got);
  return traits_type::to_int_type(block_.front());
}

std::streamsize RereadBuffer::xsgetn(char* target, std::streamsize count) {
  const std::streamsize ready = std::min<std::streamsize>(count, egptr() - gptr());
  std::copy_n(gptr(), ready, target);
  setg(eback(), gptr() + ready, egptr());
  return ready == count ? count : ready + rest_.sgetn(target + ready, count - ready);
}

Language detect_language(std::istream& in, std::string& beginning) {
  LanguageDetector detector;
  for (char c = '\0'; in.get(c);) {
    beginning += c;
    if (detector.take(c))
      break;
  }
  return detector.language();
}

Input::Input(const CommandLine& line) : bytes_(size_of_input(line)) {
  if (line.input == "-") {
    return;
  }
  errno = 0;
  file_.open(line.input, std::ios::binary);
  if (!file_) {
    throw IoError("cannot read " + line.input + ": " + std::generic_category().message(errno));
  }
}

std::streambuf& Input::text() {
  return file_.is_open() ? *file_.rdbuf() : *std::cin.rdbuf();
}

void read_input(const CommandLine& line, std::streambuf& text, TermManager& manager,
                ScriptHandler& handler) {
  std::istream in(&text);
  if (line.language) {
    read_as(*line.language, line, manager, in, handler);
    return;
  }
  std::string beginning;
  const Language language = detect_language(in, beginning);
  RereadBuffer whole(std::move(beginning), text);
  std::istream all(&whole);
  read_as(language, line, manager, all, handler);
}

}  // namespace brum::tools
