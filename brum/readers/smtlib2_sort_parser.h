#ifndef BRUM_READERS_SMTLIB2_SORT_PARSER_H
#define BRUM_READERS_SMTLIB2_SORT_PARSER_H

#include <cstddef>
#include <span>
#include <vector>

#include "brum/readers/names.h"
#include "brum/readers/scopes.h"
#include "brum/readers/smtlib2_lexer.h"
#include "brum/terms/term_manager.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// Reads sorts: `Int`, `(_ BitVec 8)`, `(Array Int Real)`, and those of the input. Keeps a stack of
/// its own, so that the depth of a sort costs no call stack.
///
/// Of a sort that was declared with parameters each application is an uninterpreted sort of its
/// own.
class SmtLib2SortParser {
 public:
  SmtLib2SortParser(SmtLib2Lexer& lexer, NameTable& names, Scopes& scopes, TermManager& manager)
      : lexer_(lexer), names_(names), scopes_(scopes), manager_(manager) {}

  /// Reads one sort. Throws ReadError for anything else and for sorts that cannot be held.
  const DataType* parse();

  /// The sort that stands for parameter `index` (from 0) in the body of a sort's definition. No
  /// text can name it.
  const DataType* parameter(std::size_t index);

 private:
  struct Frame {
    SortBinding head;
    const Name* name;            // of the head
    std::size_t first_argument;  // in arguments_
    TextPosition position;
  };

  const DataType* open(TextPosition position);
  const DataType* indexed();
  const DataType* constant(const Token& token);
  const DataType* close(const Frame& frame);
  const DataType* expand(const DataType* body, std::span<const DataType* const> arguments);

  /// An application of a declared sort.
  struct Member {
    const Name* family = nullptr;
    std::vector<const DataType*> parameters;
  };

  const DataType* sort_of(const Member& member);
  const DataType* with_parts(const DataType* sort, const std::vector<const DataType*>& parts);
  std::vector<const DataType*> parts_of(const DataType* sort) const;
  SortBinding find(const Token& token) const;

  SmtLib2Lexer& lexer_;
  NameTable& names_;
  Scopes& scopes_;
  TermManager& manager_;
  std::vector<Frame> frames_;
  std::vector<const DataType*> arguments_;
  hsh::HashMap<const DataType*, Member> members_;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB2_SORT_PARSER_H
