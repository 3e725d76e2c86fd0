#ifndef BRUM_READERS_READER_OPTIONS_H
#define BRUM_READERS_READER_OPTIONS_H

#include <string>

#include "brum/terms/data_type.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// How a text is read, of either version of SMT-LIB.
struct ReaderOptions {
  /// The file in error messages.
  std::string file_name = "input";

  /// Sorts that a declaration (`declare-sort`, `:extrasorts`) gives by name, instead of the
  /// uninterpreted sort of that name, so that a printer's invented names stand for the sorts that
  /// were printed. May be null; must outlive the reader.
  const hsh::HashMap<std::string, const DataType*>* sorts = nullptr;

  /// Lets names that are not declared in the text stand for the manager's symbols, for texts
  /// without declarations: single terms and API traces.
  bool use_signature = false;

  /// The logic until the text sets one. It says whether a numeral is an Int or, in a purely real
  /// logic, a Real.
  std::string logic;
};

}  // namespace brum

#endif  // BRUM_READERS_READER_OPTIONS_H
