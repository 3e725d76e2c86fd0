#include "brum/readers/script.h"

#include <new>
#include <optional>

#include "brum/utils/exception.h"

namespace brum {

namespace {

bool is_query(const Command& command) {
  return command.kind == Command::Kind::check_sat ||
         command.kind == Command::Kind::check_sat_assuming;
}

}  // namespace

std::string Script::output_logic() const {
  return logic_for(logic, join(added_features, later_logics_));
}

Query Script::query(std::size_t number) const {
  std::size_t left = number;
  for (std::size_t i = 0; i < commands.size() && left > 0; ++i) {
    if (is_query(commands[i]) && --left == 0)
      return in_force_before(i);
  }
  throw Exception("found " + std::to_string(num_queries_) +
                  " check-sat commands, expected number " + std::to_string(number));
}

Query Script::at_end() const {
  Query query = in_force_before(commands.size());
  query.status = status;
  return query;
}

Query Script::in_force_before(std::size_t end) const {
  Query query;
  std::vector<std::size_t> levels;  // the number of assertions at each push
  for (std::size_t i = 0; i < end; ++i) {
    const Command& command = commands[i];
    switch (command.kind) {
      case Command::Kind::assertion:
        query.assertions.push_back(command.term);
        query.names.push_back(command.name);
        break;
      case Command::Kind::push:
        levels.insert(levels.end(), command.levels, query.assertions.size());
        break;
      case Command::Kind::pop:
        if (command.levels > 0) {
          const std::size_t left = levels.size() - command.levels;
          query.assertions.resize(levels[left]);
          query.names.resize(levels[left]);
          levels.resize(left);
        }
        break;
      case Command::Kind::reset:
      case Command::Kind::reset_assertions:
        query.assertions.clear();
        query.names.clear();
        levels.clear();
        break;
      case Command::Kind::check_sat:
      case Command::Kind::check_sat_assuming:
        break;
    }
  }
  if (end < commands.size()) {
    const Command& command = commands[end];
    query.position = command.position;
    const Question& question = *command.question;
    query.status = question.status;
    query.assumptions.assign(question.literals.begin(), question.literals.end());
    query.assumptions.insert(query.assumptions.end(), question.conditions.begin(),
                             question.conditions.end());
  }
  return query;
}

void Script::on_logic(const std::string& name) {
  if (logic.empty()) {
    logic = name;
  } else if (const std::optional<LogicFeatures> features = features_of_logic(name)) {
    later_logics_ = join(later_logics_, *features);
  }
}

void Script::on_info(const std::string& keyword, const std::string& value) {
  info.emplace_back(keyword, value);
  if (keyword == "status" && num_queries_ == 0)
    status = value;
}

void Script::on_option(const std::string& keyword, const std::string& value) {
  options.emplace_back(keyword, value);
}

void Script::on_sort(const std::string& name, const DataType* sort) {
  sorts[name] = sort;
}

void Script::on_symbol(const std::string& name, const Symbol* symbol) {
  symbols.emplace_back(name, symbol);
}

void Script::on_introduced(const IntroducedSymbol& symbol) {
  introduced.push_back(symbol);
}

void Script::on_annotation(const Term* term, const std::string& keyword, const std::string& value) {
  annotations[term].emplace_back(keyword, value);
}

const Question* Script::keep(const Question& question) {
  return new (arena_.allocate(sizeof(Question)))
      Question{arena_.copy(question.status), arena_.copy(question.literals),
               arena_.copy(question.conditions)};
}

void Script::on_command(const Command& command) {
  Command kept = command;
  if (!command.name.empty())
    kept.name = arena_.copy(command.name);
  if (command.question != nullptr)
    kept.question = keep(*command.question);
  commands.push_back(kept);
  if (is_query(command))
    ++num_queries_;
}

void Script::on_end(const LogicFeatures& added) {
  added_features = added;
}

}  // namespace brum
