#include "brum/printers/symbol_collector.h"

#include <span>
#include <utility>

#include "brum/terms/term_manager.h"

namespace brum {

void SymbolCollector::add_term(const Term* term) {
  const auto enter = [this](const Term* visited) {
    if (!visited_.insert(visited)) {
      return false;
    }
    add_symbol(visited->symbol);
    return true;
  };
  walk_.run(term, enter, [](const Term*) {});
  end_term();
}

void SymbolCollector::end_term() {
  const auto waiting = std::span(waiting_).first(std::exchange(num_waiting_, 0));
  for (const Symbol* symbol : waiting) {
    symbols_.prefetch_node(symbol);
  }
  for (const Symbol* symbol : waiting) {
    if (!is_settled_ || recent_[recent_place(symbol)] != symbol) {
      insert_symbol(symbol);
    }
  }
}

void SymbolCollector::end_terms(const Term* last) {
  if (!symbols_.is_full()) {
    return;
  }
  TermSet visited;
  const Term* last_visited = last;
  const auto enter = [&](const Term* term) {
    const bool is_new = visited.insert(term);
    last_visited = is_new ? term : last_visited;
    return is_new;
  };
  walk_.run(last, enter, [](const Term*) {});
  const bool ends_with_addition =
      symbols_.size() > size_before_ && last_visited->symbol == last_added_;
  if (!ends_with_addition) {
    insert_symbol(last_visited->symbol);
  }
}

void SymbolCollector::insert_symbol(const Symbol* symbol) {
  is_settled_ = !symbols_.insert(symbol).second;
  if (!is_settled_) {
    last_added_ = symbol;
  }
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
    const bool is_array = next->kind() == DataType::Kind::array;
    if (is_array && (added || (looked_into_ && looked_into_->insert(next).second))) {
      pending_.push_back(next->get_component(1));
      pending_.push_back(next->get_component(0));
    }
    last_type_ = added ? nullptr : next;
  }
}

}  // namespace brum
