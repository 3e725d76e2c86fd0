#ifndef BRUM_READERS_SCRIPT_H
#define BRUM_READERS_SCRIPT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "brum/readers/script_handler.h"
#include "brum/terms/annotation_map.h"
#include "brum/terms/arena.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"
#include "brum/utils/large_array.h"

namespace brum {

/// What is in force when satisfiability is asked for.
struct Query {
  TextPosition position;  // of the command that asks
  std::string status;     // the last `:status` before it, empty if there is none
  std::vector<const Term*> assertions;
  std::vector<std::string_view> names;  // of the assertions, held by the script; empty for none

  /// The literals of `check-sat-assuming` and the conditions of constants introduced for them.
  std::vector<const Term*> assumptions;
};

/// A script as a whole: what SmtLib2Reader read, kept in memory.
///
///     Script script;
///     SmtLib2Reader(mgr).read(in, script);
///     const Query first = script.query(1);
class BRUM_EXPORT Script : public ScriptHandler {
 public:
  std::string logic;                                         // the first one set
  std::string status;                                        // the first query's; else the last one
  std::vector<std::pair<std::string, std::string>> info;     // every `set-info`
  std::vector<std::pair<std::string, std::string>> options;  // every `set-option`
  LargeList<Command> commands;
  AnnotationMap annotations;
  hsh::HashMap<std::string, const DataType*> sorts;            // declared ones by name
  std::vector<std::pair<std::string, const Symbol*>> symbols;  // declared ones with their names
  std::vector<IntroducedSymbol> introduced;
  LogicFeatures added_features;

  /// The logic to state for what was read: `logic`, or one that also holds what rewriting added.
  std::string output_logic() const;

  /// The number of check-sat and check-sat-assuming commands.
  std::size_t num_queries() const { return num_queries_; }

  /// What is in force at query `number`, counted from 1. Throws Exception when there is none.
  Query query(std::size_t number) const;

  /// What is in force behind the last command.
  Query at_end() const;

  void on_logic(const std::string& name) override;
  void on_info(const std::string& keyword, const std::string& value) override;
  void on_option(const std::string& keyword, const std::string& value) override;
  void on_sort(const std::string& name, const DataType* sort) override;
  void on_symbol(const std::string& name, const Symbol* symbol) override;
  void on_introduced(const IntroducedSymbol& symbol) override;
  void on_annotation(const Term* term, const std::string& keyword,
                     const std::string& value) override;
  void on_command(const Command& command) override;
  void on_end(const LogicFeatures& added) override;

 private:
  Query in_force_before(std::size_t end) const;

  /// Copies a question into the arena, its text and its lists too.
  const Question* keep(const Question& question);

  Arena arena_;  // what the commands refer to
  std::size_t num_queries_ = 0;
  LogicFeatures later_logics_;
};

}  // namespace brum

#endif  // BRUM_READERS_SCRIPT_H
