#ifndef BRUM_PRINTERS_TERM_TEXT_WALK_H
#define BRUM_PRINTERS_TERM_TEXT_WALK_H

#include <cstddef>
#include <string>
#include <vector>

#include "brum/printers/definition_map.h"
#include "brum/printers/definition_rule.h"
#include "brum/printers/term_printer.h"
#include "brum/printers/text_stream.h"
#include "brum/terms/term_walk.h"

namespace brum {

/// What becomes of an inline text in the definition map once the one text that refers to it is
/// written. A map that nobody outside the walk can see need not keep it.
enum class InlineTexts { keep, release };

/// One walk of a printer over a term: writes definitions to the document and gives every subterm
/// its text. The printer's hooks spell, the rule decides what is defined.
class TermTextWalk {
 public:
  /// All references must outlive the walk.
  TermTextWalk(TermPrinter& printer, std::ostream& out, DefinitionMap& defs,
               const DefinitionRule& rule, InlineTexts inline_texts)
      : printer_(printer), out_(out), defs_(defs), rule_(rule), inline_texts_(inline_texts) {}

  /// Gives the text of `term`, which stays in the map. Throws what the hooks throw and
  /// std::bad_alloc; the map then holds what was handled, each with its text (unless it is one
  /// that does not keep them).
  const std::string& run(const Term* term);

 private:
  /// An argument whose text is known.
  struct Argument {
    std::string* text;   // in the map
    std::size_t levels;  // of nested compound terms written inline in it
    bool movable;        // no other place needs the text while the term around it is written
  };

  bool enter(const Term* term);
  void leave(const Term* term);

  /// Writes the text of `term` inline, or its definition; gives its place in the map.
  Argument handle(const Term* term, std::size_t levels);
  Argument define(const Term* term);
  Argument write_inline(const Term* term, std::size_t levels);

  void lend_texts(std::size_t count);
  void take_texts_back(std::size_t count) noexcept;

  TermPrinter& printer_;
  std::ostream& out_;
  DefinitionMap& defs_;
  const DefinitionRule& rule_;
  InlineTexts inline_texts_;

  const Term* root_ = nullptr;
  TermWalk walk_;
  std::vector<Argument> arguments_;    // of the open terms, the innermost last
  std::vector<std::string> children_;  // the texts of the arguments of one term, for its hook
  TextStream inline_text_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TERM_TEXT_WALK_H
