#ifndef BRUM_PRINTERS_TERM_TEXTS_H
#define BRUM_PRINTERS_TERM_TEXTS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "brum/printers/definition_map.h"
#include "brum/printers/definition_rule.h"
#include "brum/printers/reference_counts.h"
#include "brum/printers/reference_texts.h"
#include "brum/printers/term_printer.h"
#include "brum/printers/text_piece.h"
#include "brum/utils/large_array.h"
#include "brum/utils/memory_stream.h"
#include "brum/utils/string_stream.h"

namespace brum {

/// Terms to be handled one after another: each after its arguments, these from left to right.
using TermOrder = LargeList<const Term*>;

/// Gives the terms of a document their texts: writes definitions to the document and keeps by which
/// text later text refers to a term. The printer's hooks spell, the rule decides what is defined.
class TermTexts {
 public:
  /// For terms that `counts` has counted, all of them. Only the texts of those that several places
  /// refer to are kept, by this object; the text of another goes from the term to the one that
  /// refers to it. All references must outlive this object. Throws std::bad_alloc.
  TermTexts(TermPrinter& printer, std::ostream& out, const DefinitionRule& rule,
            const ReferenceCounts& counts);

  /// For a map that others see: every term that is handled gets an entry in it. All references must
  /// outlive this object.
  TermTexts(TermPrinter& printer, std::ostream& out, const DefinitionRule& rule,
            DefinitionMap& defs);

  /// Makes room in the map for `num_new` more entries. Throws std::bad_alloc; the map then holds
  /// what it held.
  void reserve_entries(std::size_t num_new);

  /// Handles the terms of `order`, which are those below `term` (itself included) that were not
  /// handled yet, and gives the text of `term`, which stays until the next call. Throws what the
  /// hooks throw and std::bad_alloc; a map then holds what was handled.
  const std::string& write(const Term* term, std::span<const Term* const> order);

 private:
  using Texts = std::vector<std::string>;

  /// A handled term that one place refers to, which is yet to be written.
  struct Pending {
    const Term* term = nullptr;
    std::string* text_in_map = nullptr;  // null where there is no map
    std::string own_text;                // instead of it
    std::uint32_t levels = 0;            // of nested compound terms written inline in it
  };

  /// What a term borrows from its arguments: the texts of the last of the pending terms.
  struct Loan {
    std::size_t first = 0;     // of these terms
    std::uint32_t levels = 0;  // the most of any of them
    std::size_t bytes = 0;     // of their texts

    /// True when the term's text is not to be copied once it is put together.
    bool is_long() const { return bytes > TextPiece::long_bytes; }
  };

  bool is_entered(const Term* term) const;
  void prefetch(std::span<const Term* const> coming) const;
  void prefetch_in_map(std::span<const Term* const> coming) const;
  void prefetch_references(std::span<const Term* const> coming) const;
  std::string_view reference_to(const Term* term) const;
  void handle(const Term* term);
  void handle_application(const Term* term, bool is_shared);

  /// Writes the definition of `term` as a whole, under its label, which is then in `label_`.
  template <class WriteText>
  void define(const Term* term, const WriteText& write_text);

  void replace_text(const Term* term, std::string_view text);
  template <class Text>
  void enter(const Term* term, Text&& text, bool is_shared, std::uint32_t levels);
  template <class Text>
  void enter_in_map(const Term* term, Text&& text, bool is_shared, std::uint32_t levels);
  Pending& add_pending(const Term* term, std::uint32_t levels);

  Texts& texts_for(std::size_t arity);
  void borrow_texts(const Term* term, Texts& children, Loan& loan);
  void end_loan(std::size_t first_lent) noexcept;
  std::string_view spell(const Term* term, const Texts& children, const Loan& loan);
  std::string_view spell_long(const Term* term, const Texts& children, const Loan& loan);
  void enter_long(const Term* term, bool is_shared, std::uint32_t levels);

  TermPrinter& printer_;
  std::ostream& out_;
  const DefinitionRule& rule_;
  DefinitionMap* const defs_;    // null where nobody else sees the texts, ...
  ReferenceTexts references_;    // ... which are here then
  std::size_t num_entries_ = 0;  // in the map, as far as this object knows
  bool is_fetching_ = false;     // whether they are too many for the cache
  const Term* root_ = nullptr;
  std::vector<Pending> pending_;  // the last one needed first; ...
  std::size_t num_pending_ = 0;   // ... those behind serve again, with the memory of their texts
  std::array<Texts, 4> texts_;    // what the hooks get, by number of arguments; the last grows
  MemoryStream short_text_;
  std::optional<StringStream> long_text_;  // made when it is first needed
  std::string label_;
  std::string result_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TERM_TEXTS_H
