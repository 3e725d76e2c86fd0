#include "brum/capi/options.h"

#include <new>
#include <utility>
#include <vector>

#include "brum/capi/handles.h"
#include "brum/printers/label_prefix.h"
#include "brum/printers/smtlib_identifiers.h"

namespace brum::capi {

const brum_options& or_defaults(const brum_options* options) {
  static const brum_options defaults;
  return options == nullptr ? defaults : *options;
}

std::unique_ptr<SmtLib2TermPrinter> make_version2_printer(TermManager& terms,
                                                          const brum_options& options,
                                                          bool define_fun) {
  if (options.form == BRUM_FORM_V1) {
    throw UnfitForm("version 1.2 has no such script");
  }
  if (options.label_prefix.empty()) {
    return std::make_unique<SmtLib2TermPrinter>(&terms, options.logic, options.status, define_fun,
                                                options.attributes.get());
  }
  using Printer = WithLabelPrefix<SmtLib2TermPrinter>;
  return std::make_unique<Printer>(options.label_prefix, &terms, options.logic, options.status,
                                   define_fun, options.attributes.get());
}

std::unique_ptr<SmtLibTermPrinter> make_printer(TermManager& terms, const brum_options& options) {
  if (options.form == BRUM_FORM_DEFINE_FUN || !options.attributes->empty()) {
    if (options.form == BRUM_FORM_V1) {
      throw UnfitForm("version 1.2 has no attributes of terms");
    }
    return make_version2_printer(terms, options, options.form == BRUM_FORM_DEFINE_FUN);
  }
  const bool is_v1 = options.form == BRUM_FORM_V1;
  if (options.label_prefix.empty()) {
    return std::make_unique<SmtLibTermPrinter>(is_v1, &terms, options.logic, options.status);
  }
  if (is_v1) {
    throw UnfitForm("version 1.2 has labels of its own: no prefix");
  }
  return std::make_unique<WithLabelPrefix<SmtLibTermPrinter>>(options.label_prefix, is_v1, &terms,
                                                              options.logic, options.status);
}

namespace {

/// Runs `set` on options that are not null.
template <class Set>
brum_status change(brum_options* options, const Set& set) noexcept {
  return perform([&] {
    if (options == nullptr) {
      throw NullArgument("the options are null");
    }
    set(*options);
  });
}

}  // namespace

}  // namespace brum::capi

using namespace brum::capi;

brum_options* brum_options_new() noexcept {
  try {
    return new brum_options();
  } catch (...) {
    return nullptr;
  }
}

void brum_options_free(brum_options* options) noexcept {
  delete options;
}

brum_status brum_options_set_form(brum_options* options, brum_form form) noexcept {
  return change(options, [&](brum_options& kept) {
    if (form != BRUM_FORM_V1 && form != BRUM_FORM_V2 && form != BRUM_FORM_DEFINE_FUN) {
      throw brum::Exception("there is no such form");
    }
    kept.form = form;
  });
}

brum_status brum_options_set_logic(brum_options* options, const char* logic) noexcept {
  return change(options, [&](brum_options& kept) { kept.logic = require(logic); });
}

brum_status brum_options_set_status(brum_options* options, const char* status) noexcept {
  return change(options, [&](brum_options& kept) { kept.status = require(status); });
}

brum_status brum_options_set_label_prefix(brum_options* options, const char* prefix) noexcept {
  return change(options, [&](brum_options& kept) {
    const std::string text = require(prefix);
    if (!text.empty() && !brum::is_simple_symbol(text)) {
      throw brum::Exception("the prefix is no simple symbol");
    }
    kept.label_prefix = text;
  });
}

brum_status brum_options_set_newlines(brum_options* options, int newlines) noexcept {
  return change(options, [&](brum_options& kept) { kept.newlines = newlines != 0; });
}

brum_status brum_options_set_check_names(brum_options* options, int check) noexcept {
  return change(options, [&](brum_options& kept) { kept.check_names = check != 0; });
}

brum_status brum_options_add_attribute(brum_options* options, const brum_term* term,
                                       const char* keyword, const char* value) noexcept {
  return change(options, [&](brum_options& kept) {
    std::pair<std::string, std::string> attribute(require(keyword), require(value));
    const brum::Term* annotated = require(term);
    // An entry without attributes would be printed as such: it must not stay behind alone.
    std::vector<std::pair<std::string, std::string>> attributes;
    const auto found = kept.attributes->find(annotated);
    if (found != kept.attributes->end()) {
      found->second.push_back(std::move(attribute));
      return;
    }
    attributes.push_back(std::move(attribute));
    (*kept.attributes)[annotated].swap(attributes);
  });
}
