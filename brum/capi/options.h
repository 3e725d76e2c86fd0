#ifndef BRUM_CAPI_OPTIONS_H
#define BRUM_CAPI_OPTIONS_H

// Printer options and the printers that they stand for. Not part of the interface.

#include <memory>
#include <string>

#include "brum/capi/printing.h"
#include "brum/printers/smtlib2_term_printer.h"
#include "brum/terms/annotation_map.h"

struct brum_options {
  brum_form form = BRUM_FORM_V2;
  std::string logic;
  std::string status;
  std::string label_prefix;  // empty for the usual labels
  bool newlines = true;
  bool check_names = true;

  /// Shared with the traces that were made with these options; null while there are none.
  std::shared_ptr<brum::AnnotationMap> attributes = std::make_shared<brum::AnnotationMap>();
};

namespace brum::capi {

/// Gives `options`, or new ones for null. Throws std::bad_alloc.
const brum_options& or_defaults(const brum_options* options);

/// Makes a printer of version 2. `define_fun`: whether shared subterms become commands. The options
/// must outlive the printer, or share their attributes with its owner. Throws UnfitForm for options
/// of version 1.2.
std::unique_ptr<SmtLib2TermPrinter> make_version2_printer(TermManager& terms,
                                                          const brum_options& options,
                                                          bool define_fun);

/// Makes a printer of the form that the options ask for.
std::unique_ptr<SmtLibTermPrinter> make_printer(TermManager& terms, const brum_options& options);

}  // namespace brum::capi

#endif  // BRUM_CAPI_OPTIONS_H
