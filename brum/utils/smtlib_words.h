#ifndef BRUM_UTILS_SMTLIB_WORDS_H
#define BRUM_UTILS_SMTLIB_WORDS_H

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace brum {

/// The reserved words of SMT-LIB 2.6, the names of its commands among them: no symbol may be
/// written like one of these, unless it stands between bars.
inline constexpr std::array<std::string_view, 44> smtlib2_reserved_words{
    "!",
    "_",
    "as",
    "BINARY",
    "DECIMAL",
    "exists",
    "forall",
    "HEXADECIMAL",
    "let",
    "match",
    "NUMERAL",
    "par",
    "STRING",
    "assert",
    "check-sat",
    "check-sat-assuming",
    "declare-const",
    "declare-datatype",
    "declare-datatypes",
    "declare-fun",
    "declare-sort",
    "define-const",
    "define-fun",
    "define-fun-rec",
    "define-funs-rec",
    "define-sort",
    "echo",
    "exit",
    "get-assertions",
    "get-assignment",
    "get-info",
    "get-model",
    "get-option",
    "get-proof",
    "get-unsat-assumptions",
    "get-unsat-core",
    "get-value",
    "pop",
    "push",
    "reset",
    "reset-assertions",
    "set-info",
    "set-logic",
    "set-option",
};

/// Whether a word is one of a few.
inline bool is_among(std::span<const std::string_view> words, std::string_view word) {
  return std::ranges::find(words, word) != words.end();
}

}  // namespace brum

#endif  // BRUM_UTILS_SMTLIB_WORDS_H
