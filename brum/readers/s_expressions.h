#ifndef BRUM_READERS_S_EXPRESSIONS_H
#define BRUM_READERS_S_EXPRESSIONS_H

#include <string>

#include "brum/readers/smtlib2_lexer.h"

namespace brum {

/// Reads one token or one bracketed group, whatever it means, and gives it as text: tokens as they
/// are written, one blank between them, none beside brackets. Throws ReadError when there is none.
std::string read_s_expression(SmtLib2Lexer& lexer);

/// Reads on to the bracket that closes the group in which the lexer stands, and over it.
void skip_rest_of_group(SmtLib2Lexer& lexer);

}  // namespace brum

#endif  // BRUM_READERS_S_EXPRESSIONS_H
