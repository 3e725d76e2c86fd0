#ifndef BRUM_TOOLS_PRINTER_CHOICE_H
#define BRUM_TOOLS_PRINTER_CHOICE_H

#include <optional>
#include <string>

#include "brum/printers/label_prefix.h"
#include "counting_printer.h"

namespace brum::tools {

/// Makes a printer that counts its definitions and has the user's labels, if asked for; calls `use`
/// with it. The arguments are those of `Printer`.
template <class Printer, class Use, class... Arguments>
void with_printer(const std::optional<std::string>& label, Use use, Arguments&&... arguments) {
  if (label) {
    CountingPrinter<WithLabelPrefix<Printer>> printer(*label,
                                                      std::forward<Arguments>(arguments)...);
    use(printer);
  } else {
    CountingPrinter<Printer> printer(std::forward<Arguments>(arguments)...);
    use(printer);
  }
}

}  // namespace brum::tools

#endif  // BRUM_TOOLS_PRINTER_CHOICE_H
