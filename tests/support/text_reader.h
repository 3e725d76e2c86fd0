#ifndef BRUM_TESTS_SUPPORT_TEXT_READER_H
#define BRUM_TESTS_SUPPORT_TEXT_READER_H

#include <string_view>

#include "brum/terms/term_manager.h"

namespace brum::testing {

/**
 * Reads back what the printers wrote, for tests only: the terms are made in `mgr`, so a text that
 * means the formula it was printed from gives that very formula.
 *
 * Understood are `let` and `flet` with one binding each (in the brackets of either version),
 * `define-fun` commands without arguments, `assert`, the connectives and `+ * <=` over Int, and the
 * user's symbols under their plain names. A binding hides a user symbol of its name. Other commands
 * are skipped. Throws std::runtime_error on anything else; never recurses.
 */

/// Reads one expression.
const Term* read_expression(TermManager& mgr, std::string_view text);

/// Reads a document of either version; gives its one assertion or formula.
const Term* read_document(TermManager& mgr, std::string_view text);

}  // namespace brum::testing

#endif
