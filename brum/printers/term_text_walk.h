#ifndef BRUM_PRINTERS_TERM_TEXT_WALK_H
#define BRUM_PRINTERS_TERM_TEXT_WALK_H

#include <array>
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
/// written.
enum class InlineTexts {
  /// It stays. For maps that others see.
  keep,
  /// It is let go. For a map that is the walk's own: nobody else sees it, and it is empty at first.
  release
};

/// One walk of a printer over a term: writes definitions to the document and gives every subterm
/// its text. The printer's hooks spell, the rule decides what is defined.
class TermTextWalk {
 public:
  /// All references must outlive the walk.
  TermTextWalk(TermPrinter& printer, std::ostream& out, DefinitionMap& defs,
               const DefinitionRule& rule, InlineTexts inline_texts)
      : printer_(printer), out_(out), defs_(defs), rule_(rule), inline_texts_(inline_texts) {}

  /// Makes room in the map for `num_terms` terms at once. Throws std::bad_alloc; the map is then
  /// good for destruction only.
  void reserve(std::size_t num_terms);

  /// Gives the text of `term`, which stays in the map. Throws what the hooks throw and
  /// std::bad_alloc; the map then holds what was handled, each with its text (unless it is one
  /// that does not keep them).
  const std::string& run(const Term* term);

 private:
  using Texts = std::vector<std::string>;

  /// An argument whose text is known.
  struct Argument {
    std::string* text;   // in the map
    std::size_t levels;  // of nested compound terms written inline in it
    bool movable;        // no other place needs the text while the term around it is written
  };

  bool enter(const Term* term);
  void leave(const Term* term);
  bool is_first_reference(const Term* term) const;

  /// Writes the text of `term` inline, or its definition; gives its place in the map.
  Argument handle(const Term* term, const Argument* arguments, Texts& children);
  Argument define(const Term* term, const Texts& children);
  Argument write_inline(const Term* term, std::size_t levels, Texts& children);
  Argument write_leaf(const Term* term);

  /// Writes the definition of `term` as a whole; gives its label.
  template <class WriteText>
  std::string write_definition(const Term* term, const WriteText& write_text);

  std::string* keep(const Term* term, std::string&& text);

  Texts& texts_for(std::size_t arity);
  void lend_texts(const Argument* arguments, Texts& children) const;
  void take_texts_back(const Argument* arguments, Texts& children) const noexcept;
  std::string take_longest_buffer(Texts& children) const noexcept;

  TermPrinter& printer_;
  std::ostream& out_;
  DefinitionMap& defs_;
  const DefinitionRule& rule_;
  InlineTexts inline_texts_;

  const Term* root_ = nullptr;
  TermWalk walk_;
  std::vector<Argument> arguments_;  // of the open terms, the innermost last
  std::array<Texts, 4> texts_;       // what the hooks get, by number of arguments; the last grows
  TextStream inline_text_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TERM_TEXT_WALK_H
