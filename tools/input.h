#ifndef BRUM_TOOLS_INPUT_H
#define BRUM_TOOLS_INPUT_H

#include <cstddef>
#include <fstream>
#include <istream>
#include <streambuf>
#include <string>
#include <vector>

#include "brum/readers/script_handler.h"
#include "brum/terms/term_manager.h"
#include "command_line.h"

namespace brum::tools {

/// A text whose beginning was looked at: gives that again and then the rest of the stream, which
/// need not be one that can go back.
class RereadBuffer : public std::streambuf {
 public:
  /// `rest` must outlive the buffer.
  RereadBuffer(std::string beginning, std::streambuf& rest);

 protected:
  int_type underflow() override;
  std::streamsize xsgetn(char* target, std::streamsize count) override;

 private:
  static constexpr std::size_t block_bytes = 1U << 12U;

  std::string beginning_;
  std::vector<char> block_;
  std::streambuf& rest_;
};

/// Gives the language of a text by its first word, behind blanks and comments: version 1 if that is
/// `benchmark` after a bracket. Appends what it took from the stream to `beginning`.
Language detect_language(std::istream& in, std::string& beginning);

/// The command's input, open.
class Input {
 public:
  /// Opens the file that the user named, or takes standard input. Throws IoError.
  explicit Input(const CommandLine& line);

  std::streambuf& text();

  /// The size of the file, 0 where it is not known.
  std::size_t bytes() const { return bytes_; }

 private:
  std::size_t bytes_;
  std::ifstream file_;
};

/// Reads the text of the command's input, in the language that the user named or that it is found
/// to be in. Throws ReadError when it is wrong.
void read_input(const CommandLine& line, std::streambuf& text, TermManager& manager,
                ScriptHandler& handler);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_INPUT_H
