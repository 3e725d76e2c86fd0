#ifndef BRUM_TOOLS_ATTRIBUTES_H
#define BRUM_TOOLS_ATTRIBUTES_H

#include <functional>
#include <string>
#include <string_view>

#include "brum/readers/script.h"
#include "brum/terms/annotation_map.h"
#include "diagnostics.h"

namespace brum::tools {

/// The names that a script may still give by `:named`. A script may give a name once.
class FreeNames {
 public:
  /// `taken` are the symbols that the script declares.
  explicit FreeNames(const hsh::HashSet<const Symbol*>& taken);

  /// Takes `name`; gives whether it was free.
  bool take(const std::string& name) { return taken_.insert(name).second; }

 private:
  hsh::HashSet<std::string> taken_;
};

/// Gives the name that a symbol of SMT-LIB 2.6 stands for: its text without bars.
std::string_view symbol_name(std::string_view text);

/// Gives the attributes of the script's terms that solvers accept where the terms are printed:
/// names that are free, and other attributes that have a plain value and no meaning of their own
/// outside quantifiers. `printed_once` says whether the document prints a term exactly once;
/// attributes of other terms are left out. Every attribute left out is told to `diagnostics`.
AnnotationMap& keep_attributes(const Script& script,
                               const std::function<bool(const Term*)>& printed_once,
                               FreeNames& names, Diagnostics& diagnostics, AnnotationMap& kept);

}  // namespace brum::tools

#endif  // BRUM_TOOLS_ATTRIBUTES_H
