#include "options.h"

#include <pybind11/stl.h>

#include <utility>

#include "brum/printers/smtlib_identifiers.h"

namespace brum::python {

std::unique_ptr<AnnotationMap> to_attributes(const ManagerPtr& manager, py::handle dictionary) {
  auto attributes = std::make_unique<AnnotationMap>();
  if (dictionary.is_none()) {
    return attributes;
  }
  for (const auto& [key, value] : py::cast<py::dict>(dictionary)) {
    const auto& term = py::cast<const TermHandle&>(key);
    require_owner(manager, term);
    (*attributes)[term.term] = py::cast<std::vector<std::pair<std::string, std::string>>>(value);
  }
  return attributes;
}

namespace {

void check(const Options& options) {
  if (options.version != 1 && options.version != 2) {
    throw py::value_error("the version is 1 or 2");
  }
  if (!options.label_prefix.empty() && !is_simple_symbol(options.label_prefix)) {
    throw py::value_error("the label prefix is no simple symbol");
  }
  if (options.version == 1 &&
      (options.define_fun || options.check_sat || !options.label_prefix.empty())) {
    throw py::value_error("version 1.2 has neither define_fun nor check_sat nor label_prefix");
  }
}

}  // namespace

std::unique_ptr<SmtLib2TermPrinter> make_version2_printer(TermManager& manager,
                                                          const Options& options,
                                                          const AnnotationMap& attributes) {
  check(options);
  if (options.label_prefix.empty()) {
    return std::make_unique<SmtLib2TermPrinter>(&manager, options.logic, options.status,
                                                options.define_fun, &attributes);
  }
  return std::make_unique<WithLabelPrefix<SmtLib2TermPrinter>>(options.label_prefix, &manager,
                                                               options.logic, options.status,
                                                               options.define_fun, &attributes);
}

std::unique_ptr<SmtLibTermPrinter> make_printer(TermManager& manager, const Options& options,
                                                const AnnotationMap& attributes) {
  check(options);
  if (options.version == 1 && !attributes.empty()) {
    throw py::value_error("version 1.2 has no attributes of terms");
  }
  if (options.define_fun || !attributes.empty()) {
    return make_version2_printer(manager, options, attributes);
  }
  const bool is_v1 = options.version == 1;
  if (options.label_prefix.empty()) {
    return std::make_unique<SmtLibTermPrinter>(is_v1, &manager, options.logic, options.status);
  }
  return std::make_unique<WithLabelPrefix<SmtLibTermPrinter>>(options.label_prefix, is_v1, &manager,
                                                              options.logic, options.status);
}

void require_safe_names(const TermManager& manager, const std::vector<const Term*>& terms,
                        const Options& options) {
  if (!options.check_names) {
    return;
  }
  const std::vector<NameProblem> problems = check_names(manager, terms, options.version == 1);
  if (!problems.empty()) {
    throw TermPrinter::error("the name `" + std::string(problems.front().symbol->name_view()) +
                             "` " + problems.front().reason);
  }
}

}  // namespace brum::python
