#include "brum/printers/term_text_walk.h"

#include <algorithm>
#include <utility>

#include "brum/printers/write_text.h"
#include "brum/utils/scope_exit.h"

namespace brum {

const std::string& TermTextWalk::run(const Term* term) {
  root_ = term;
  arguments_.clear();
  walk_.run(
      term, [this](const Term* visited) { return enter(visited); },
      [this](const Term* visited) { leave(visited); });
  return *arguments_.back().text;
}

bool TermTextWalk::enter(const Term* term) {
  const auto known = defs_.find(term);
  if (known == defs_.end()) {
    return true;
  }
  arguments_.push_back({&known->second, 0, false});
  return false;
}

void TermTextWalk::leave(const Term* term) {
  const std::size_t count = term->symbol->arity;
  std::size_t levels = count == 0 ? 0 : 1;
  for (std::size_t i = arguments_.size() - count; i < arguments_.size(); ++i) {
    levels = std::max(levels, arguments_[i].levels + 1);
  }
  lend_texts(count);
  Argument result{};
  {
    const ScopeExit give_back([&] { take_texts_back(count); });
    result = handle(term, levels);
  }
  arguments_.resize(arguments_.size() - count);
  arguments_.push_back(result);
}

TermTextWalk::Argument TermTextWalk::handle(const Term* term, std::size_t levels) {
  if (rule_.is_shared(term) || (term != root_ && rule_.exceeds_levels(levels))) {
    return define(term);
  }
  return write_inline(term, levels);
}

TermTextWalk::Argument TermTextWalk::define(const Term* term) {
  std::string label;
  printer_.get_define_label(term, label);
  printer_.print_define_start(out_, label, term);
  printer_.print_term_and_children(out_, term, children_);
  printer_.print_define_end(out_, term);
  std::string& text = defs_[term];
  text = std::move(label);
  return {&text, 0, false};
}

TermTextWalk::Argument TermTextWalk::write_inline(const Term* term, std::size_t levels) {
  inline_text_.clear_text();
  printer_.print_term_and_children(inline_text_, term, children_);
  const std::string_view written = inline_text_.text();
  const bool compound = term->symbol->arity != 0;
  if (compound && rule_.exceeds_bytes(written.size())) {
    std::string label;
    printer_.get_define_label(term, label);
    printer_.print_define_start(out_, label, term);
    write_text(out_, written);
    printer_.print_define_end(out_, term);
    std::string& text = defs_[term];
    text = std::move(label);
    return {&text, 0, false};
  }
  // Made before its place in the map: where memory ends, the map holds no term without its text.
  std::string inline_text(written);
  std::string& text = defs_[term];
  text = std::move(inline_text);
  return {&text, levels, compound};
}

// The hook wants the texts of the arguments side by side. A long text that only this term refers to
// is lent from its place in the map instead of being copied. Copies are made first: should the same
// text stand in two places after all, it is still there when the second is filled.
void TermTextWalk::lend_texts(std::size_t count) {
  children_.resize(count);
  const auto arguments = arguments_.end() - static_cast<std::ptrdiff_t>(count);
  for (std::size_t i = 0; i < count; ++i) {
    const Argument& argument = arguments[static_cast<std::ptrdiff_t>(i)];
    if (!argument.movable) {
      children_[i] = *argument.text;
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    const Argument& argument = arguments[static_cast<std::ptrdiff_t>(i)];
    if (argument.movable) {
      // Through a third string, so that the map's own does not inherit the old buffer.
      std::string(std::move(*argument.text)).swap(children_[i]);
    }
  }
}

void TermTextWalk::take_texts_back(std::size_t count) noexcept {
  const auto arguments = arguments_.end() - static_cast<std::ptrdiff_t>(count);
  for (std::size_t i = 0; i < count; ++i) {
    const Argument& argument = arguments[static_cast<std::ptrdiff_t>(i)];
    if (argument.movable && inline_texts_ == InlineTexts::keep) {
      children_[i].swap(*argument.text);
    }
  }
}

}  // namespace brum
