#ifndef BRUM_READERS_COMMAND_TELLER_H
#define BRUM_READERS_COMMAND_TELLER_H

#include <cstddef>
#include <vector>

#include "brum/readers/partial_operators.h"
#include "brum/readers/script_handler.h"

namespace brum {

/// Tells a handler of the commands of an input, and of each made-up symbol before the first command
/// that may use it.
class CommandTeller {
 public:
  /// Both must outlive this object.
  CommandTeller(ScriptHandler& handler, const PartialOperators& operators)
      : handler_(handler), operators_(operators) {}

  /// Tells of symbols made up since the last command, then of the command. Throws what the handler
  /// throws.
  void tell(const Command& command) {
    const std::vector<IntroducedSymbol>& introduced = operators_.introduced();
    for (; introduced_told_ < introduced.size(); ++introduced_told_)
      handler_.on_introduced(introduced[introduced_told_]);
    handler_.on_command(command);
  }

 private:
  ScriptHandler& handler_;
  const PartialOperators& operators_;
  std::size_t introduced_told_ = 0;
};

}  // namespace brum

#endif  // BRUM_READERS_COMMAND_TELLER_H
