#include "brum/printers/symbol_collector.h"

#include "brum/terms/term_manager.h"

namespace brum {

void SymbolCollector::add_term(const Term* term) {
  const auto enter = [this](const Term* visited) {
    std::uint8_t& mark = visited_[visited];
    if (mark != 0) {
      return false;
    }
    mark = 1;
    add_symbol(visited->symbol);
    return true;
  };
  walk_.run(term, enter, [](const Term*) {});
}

void SymbolCollector::insert_symbol(const Symbol* symbol) {
  is_settled_ = !symbols_.insert(symbol).second;
  if (TermManager::is_interpreted(symbol)) {
    recent_[recent_place(symbol)] = symbol;
    return;
  }
  const DataType* type = symbol->type;
  if (type->kind() != DataType::Kind::function) {
    add_type(type);
    return;
  }
  for (std::size_t i = 0; i < type->num_components(); ++i) {
    add_type(type->get_component(i));
  }
}

void SymbolCollector::add_type(const DataType* type) {
  if (type == last_type_) {
    return;
  }
  pending_.assign(1, type);
  while (!pending_.empty()) {
    const DataType* next = pending_.back();
    pending_.pop_back();
    const bool added = types_.insert(next).second;
    if (added && next->kind() == DataType::Kind::array) {
      pending_.push_back(next->get_component(1));
      pending_.push_back(next->get_component(0));
    }
    last_type_ = added ? nullptr : next;
  }
}

}  // namespace brum
