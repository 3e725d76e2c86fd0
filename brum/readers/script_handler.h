#ifndef BRUM_READERS_SCRIPT_HANDLER_H
#define BRUM_READERS_SCRIPT_HANDLER_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "brum/readers/logic_name.h"
#include "brum/readers/partial_operators.h"
#include "brum/readers/read_error.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"

namespace brum {

/// What a check-sat or check-sat-assuming asks for. Its text and lists belong to who gives it.
struct Question {
  /// The last `:status` before it, empty if there is none.
  std::string_view status;

  /// Of check_sat_assuming: the literals as written, and the conditions of constants that were
  /// introduced for them.
  std::span<const Term* const> literals;
  std::span<const Term* const> conditions;
};

/// A command that says what is asserted or asked. Its text and its question belong to who gives it:
/// in ScriptHandler::on_command() they hold during the call, in a Script as long as that does.
struct Command {
  enum class Kind : std::uint8_t {
    assertion,
    push,
    pop,
    check_sat,
    check_sat_assuming,
    reset,
    reset_assertions,
  };

  Kind kind = Kind::assertion;
  TextPosition position;  // of its opening bracket

  /// Of an assertion: the term, conjoined with the conditions of constants that were introduced
  /// for it, and the name given by `:named`, without bars, empty if there is none. An operator's
  /// name, which is free where the logic lacks its theory, has a suffix here.
  const Term* term = nullptr;
  std::string_view name;

  /// Of push and pop: how many levels.
  std::size_t levels = 0;

  /// Of check_sat and check_sat_assuming; null for any other command.
  const Question* question = nullptr;
};

/// Told what a script says while it is read, in the order of the script. By default nothing is
/// done. What an operation throws ends the reading.
class BRUM_EXPORT ScriptHandler {
 public:
  ScriptHandler() = default;
  ScriptHandler(const ScriptHandler&) = delete;
  ScriptHandler& operator=(const ScriptHandler&) = delete;
  virtual ~ScriptHandler() = default;

  /// `set-logic`.
  virtual void on_logic(const std::string& /*name*/) {}

  /// `set-info` and `set-option`: the keyword without its colon, and the value as text.
  virtual void on_info(const std::string& /*keyword*/, const std::string& /*value*/) {}
  virtual void on_option(const std::string& /*keyword*/, const std::string& /*value*/) {}

  /// `declare-sort` without parameters.
  virtual void on_sort(const std::string& /*name*/, const DataType* /*sort*/) {}

  /// A declaration of a constant or function. `symbol` has another name than the one written where
  /// the manager knows that name under another sort (from a scope that has ended, say).
  virtual void on_symbol(const std::string& /*name*/, const Symbol* /*symbol*/) {}

  /// A symbol was made up; always before the command that needs it.
  virtual void on_introduced(const IntroducedSymbol& /*introduced*/) {}

  /// `(! term :keyword value)`, but for the name of a whole assertion. The keyword has no colon. A
  /// name is as in Command::name, but with the bars that it was written with.
  virtual void on_annotation(const Term* /*term*/, const std::string& /*keyword*/,
                             const std::string& /*value*/) {}

  /// A command in its place among the others.
  virtual void on_command(const Command& /*command*/) {}

  /// The script has ended. `added`: what the rewriting of terms needed; the text may or may not
  /// have used it too.
  virtual void on_end(const LogicFeatures& /*added*/) {}
};

}  // namespace brum

#endif  // BRUM_READERS_SCRIPT_HANDLER_H
