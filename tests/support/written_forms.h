#ifndef BRUM_TESTS_SUPPORT_WRITTEN_FORMS_H
#define BRUM_TESTS_SUPPORT_WRITTEN_FORMS_H

#include <span>
#include <string>

#include "brum/terms/term_manager.h"
#include "brum/utils/hash_containers.h"

namespace brum::testing {

/// A text with what it takes to read it.
struct Written {
  std::string text;
  hsh::HashMap<std::string, const DataType*> sorts;  // by the names that the printer invented
};

/// A form of text: how a formula is written in it, and read.
struct WrittenForm {
  const char* name;
  bool is_v1;
  void (*write)(TermManager& mgr, const Term* term, const std::string& logic, Written& written);
  const Term* (*read)(TermManager& mgr, const Written& written, const std::string& logic);
};

/// Every form that the printers write: documents, single terms, scripts of terms and traces, in
/// both versions and with both ways of definition. They read formulas of a TermGenerator, whose
/// uninterpreted sorts they know.
std::span<const WrittenForm> written_forms();

}  // namespace brum::testing

#endif  // BRUM_TESTS_SUPPORT_WRITTEN_FORMS_H
