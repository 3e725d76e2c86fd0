#ifndef BRUM_PYTHON_OPTIONS_H
#define BRUM_PYTHON_OPTIONS_H

#include <memory>
#include <string>
#include <vector>

#include "handles.h"

namespace brum::python {

/// How a document is to be printed: the keyword arguments of the module's functions.
struct Options {
  int version = 2;
  bool define_fun = false;
  std::string logic;
  std::string status;
  std::string label_prefix;  // empty for the usual labels
  bool check_names = true;
  bool check_sat = false;  // ends a script of version 2 by that command
};

/// Gives the attributes of a Python dictionary {term: [(keyword, value), ...]}; none for None.
/// Throws TermManager::error for a term of another manager.
std::unique_ptr<AnnotationMap> to_attributes(const ManagerPtr& manager, py::handle dictionary);

/// Makes the printer that the options ask for. `attributes` must outlive it. Throws py::value_error
/// for options that do not go together.
std::unique_ptr<SmtLibTermPrinter> make_printer(TermManager& manager, const Options& options,
                                                const AnnotationMap& attributes);

/// The same for what only version 2 has.
std::unique_ptr<SmtLib2TermPrinter> make_version2_printer(TermManager& manager,
                                                          const Options& options,
                                                          const AnnotationMap& attributes);

/// Throws Exception when the name of a symbol of `terms` would not stand for it alone.
void require_safe_names(const TermManager& manager, const std::vector<const Term*>& terms,
                        const Options& options);

}  // namespace brum::python

#endif  // BRUM_PYTHON_OPTIONS_H
