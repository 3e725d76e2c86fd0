#ifndef BRUM_PRINTERS_TERM_TEXTS_H
#define BRUM_PRINTERS_TERM_TEXTS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "brum/printers/definition_map.h"
#include "brum/printers/definition_rule.h"
#include "brum/printers/term_printer.h"
#include "brum/utils/large_array.h"
#include "brum/utils/memory_stream.h"

namespace brum {

/// Terms to be handled one after another: each after its arguments, these from left to right.
using TermOrder = LargeList<const Term*>;

/// What becomes of an inline text in the definition map once the one text that refers to it is
/// written.
enum class InlineTexts : std::uint8_t {
  /// It stays. For maps that others see.
  keep,
  /// It is let go. For a map that nobody else sees and that is empty at first.
  release
};

/// Gives the terms of a document their texts: writes definitions to the document and enters every
/// term into the map. The printer's hooks spell, the rule decides what is defined.
class TermTexts {
 public:
  /// All references must outlive this object.
  TermTexts(TermPrinter& printer, std::ostream& out, DefinitionMap& defs,
            const DefinitionRule& rule, InlineTexts inline_texts)
      : printer_(printer), out_(out), defs_(defs), rule_(rule), inline_texts_(inline_texts) {}

  /// Makes room in the map for `num_terms` terms in all, those that it holds included. Throws
  /// std::bad_alloc; the map is then good for destruction only.
  void reserve(std::size_t num_terms);

  /// Handles the terms of `order`, which are those below `term` (itself included) that the map does
  /// not hold, and gives the text of `term`, which stays in the map (with InlineTexts::release
  /// until the next call, as an inline text). Throws what the hooks throw and std::bad_alloc; the
  /// map then holds what was handled, each with its text unless that was let go.
  const std::string& write(const Term* term, std::span<const Term* const> order);

  /// Gives back the memory of the map, quicker than its destruction would: only with
  /// InlineTexts::release, when no text is needed any more. The map is good for destruction only
  /// then.
  void abandon_map() noexcept;

 private:
  using Texts = std::vector<std::string>;

  /// A handled term that one place refers to, which is yet to be written.
  struct Pending {
    const Term* term;
    std::string* text;     // in the map
    std::uint32_t levels;  // of nested compound terms written inline in it
    std::uint32_t place;   // the argument position that refers to it, while that is written
  };

  using PendingTerms = std::vector<Pending>;

  void prefetch(std::span<const Term* const> coming) const;
  void handle(const Term* term);
  void handle_leaf(const Term* term);

  /// Gives the texts of the arguments of `term` to `children`, then writes `term` and gives the
  /// place of its text in the map.
  std::string* define(const Term* term, const Texts& children);
  std::string* write_inline(const Term* term, const Texts& children);

  /// Writes the definition of `term` as a whole; gives its label.
  template <class WriteText>
  std::string write_definition(const Term* term, const WriteText& write_text);

  std::string inline_text();
  std::string* keep(const Term* term, std::string&& text);
  std::string* keep_for_good(const Term* term, std::string&& text);

  void end_root() noexcept;

  Texts& texts_for(std::size_t arity);
  void borrow_texts(const Term* term, Texts& children, PendingTerms::iterator& first_lent,
                    std::uint32_t& levels);
  void end_loan(PendingTerms::iterator first_lent, Texts& children) noexcept;

  TermPrinter& printer_;
  std::ostream& out_;
  DefinitionMap& defs_;
  const DefinitionRule& rule_;
  const InlineTexts inline_texts_;

  const Term* root_ = nullptr;
  PendingTerms pending_;                  // the last one needed first
  std::vector<std::string*> long_texts_;  // those to stay that have memory outside the map
  std::array<Texts, 4> texts_;  // what the hooks get, by number of arguments; the last grows
  MemoryStream inline_text_;
  std::array<std::string, 8> spare_texts_;  // let go, but for their memory
  std::size_t num_spare_texts_ = 0;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TERM_TEXTS_H
