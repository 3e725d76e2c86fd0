#include "options.h"

#include <utility>

#include "brum/printers/smtlib_identifiers.h"

namespace brum::python {

namespace {

[[noreturn]] void refuse_attributes() {
  throw py::type_error("attributes are a mapping {term: [(keyword, value), ...]} with texts");
}

/// Whether the elements of `value` are worth a look: those of a text are not.
bool is_list(py::handle value) {
  return py::isinstance<py::sequence>(value) && !py::isinstance<py::str>(value) &&
         !py::isinstance<py::bytes>(value);
}

std::vector<std::pair<std::string, std::string>> to_pairs(py::handle value) {
  if (!is_list(value)) {
    refuse_attributes();
  }
  std::vector<std::pair<std::string, std::string>> pairs;
  for (const py::handle element : value) {
    Name keyword;
    Name text;
    if (!is_list(element) || py::len(element) != 2 || !read_name(element[py::int_(0)], keyword) ||
        !read_name(element[py::int_(1)], text)) {
      refuse_attributes();
    }
    pairs.emplace_back(std::move(keyword.bytes), std::move(text.bytes));
  }
  return pairs;
}

}  // namespace

std::unique_ptr<AnnotationMap> to_attributes(const ManagerPtr& manager, py::handle dictionary) {
  auto attributes = std::make_unique<AnnotationMap>();
  if (dictionary.is_none()) {
    return attributes;
  }
  if (!py::isinstance(dictionary, py::module_::import("collections.abc").attr("Mapping"))) {
    refuse_attributes();
  }
  for (const auto& [key, value] : py::dict(py::reinterpret_borrow<py::object>(dictionary))) {
    if (!py::isinstance<TermHandle>(key)) {
      refuse_attributes();
    }
    const auto& term = py::cast<const TermHandle&>(key);
    require_owner(manager, term);
    std::vector<std::pair<std::string, std::string>> pairs = to_pairs(value);
    if (!pairs.empty()) {  // an empty entry would be printed as such, which no reader takes
      (*attributes)[term.term] = std::move(pairs);
    }
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
