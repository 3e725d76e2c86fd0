#ifndef BRUM_PRINTERS_LABEL_PREFIX_H
#define BRUM_PRINTERS_LABEL_PREFIX_H

#include <string>
#include <utility>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/smtlib_term_printer.h"

namespace brum {

/// A printer whose labels are a prefix of the caller's and the term's id, `d_12` for prefix `d_`,
/// kept apart from user symbols as the usual labels are.
///
/// Names that begin with a full stop are reserved for solvers (SMT-LIB 2.6), and some solvers take
/// the usual label `.def_12` in `let` but not in `define-fun`.
///
///     WithLabelPrefix<SmtLib2TermPrinter> printer("d_", &mgr, "QF_BV", "", true, nullptr);
///
/// Also the smallest example of extending a printer: one hook is overridden.
template <class Printer>
class WithLabelPrefix : public Printer {
 public:
  /// `prefix` must be a simple symbol of the version written; the other arguments are those of
  /// `Printer`.
  template <class... Arguments>
  explicit WithLabelPrefix(std::string prefix, Arguments&&... arguments)
      : Printer(std::forward<Arguments>(arguments)...), prefix_(std::move(prefix)) {}

  void get_define_label(const Term* term, std::string& label) override {
    this->make_label(prefix_, term, label);
  }

 private:
  std::string prefix_;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_LABEL_PREFIX_H
